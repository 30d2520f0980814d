#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QLabel>
#include <QLineEdit>

//! [fields.row]
QWidget* createField()
{
    auto* computer = new VantLineEdit;
    computer->setSpacing(8);
    computer->getPreLabel()->setText("&Computer"); // Alt+C leads to the field
    computer->getPostLabel()->setText(".example.org");
    computer->getLineEdit()->setText("archive");
    return computer;
}

//! [fields.row]

//! [fields.test]
bool isPort(const QString& number)
{
    const int port = number.toInt();
    return port >= 1 && port <= 65535;
}

QWidget* createTestedField()
{
    auto* port = new VantLineEdit;
    port->setSpacing(8);
    port->getPreLabel()->setText("&Port");
    port->setValidator(isPort);
    const auto judge = [port] { port->setError(!port->validate()); };
    QObject::connect(port->getLineEdit(), &QLineEdit::textChanged, port, judge);
    port->getLineEdit()->setText("65536"); // shows the error look
    return port;
}

//! [fields.test]
