#include "sheets/covered-window.h"

#include "theme/default-theme.h"

#include <QHBoxLayout>
#include <QWindow>
#include <QtTest>

CoveredWindow::CoveredWindow(const QSize& size)
    : field(new QLineEdit)
    , button(new QPushButton)
{
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(field);
    layout->addWidget(button);
    connect(button, SIGNAL(clicked()), this, SLOT(countClick()));
    resize(size);
}

bool CoveredWindow::open()
{
    show();
    return QTest::qWaitFor(
        [this] {
            activateWindow(); // again and again, for window managers with other plans
            return windowHandle()->isActive();
        },
        20000);
}

QString CoveredWindow::remains()
{
    QStringList found;
    const auto demand = [&found](bool holds, const char* otherwise) {
        if (!holds) {
            found += QLatin1String(otherwise);
        }
    };
    demand(!shownMask(), "a mask shows");
    const int clicksBefore = clicks;
    click(button);
    demand(clicks == clicksBefore + 1, "the button takes no click");
    field->clear();
    field->setFocus();
    press(Qt::Key_Space);
    demand(field->text() == QLatin1String(" "), "the field takes no key");
    keys.clear();
    press(Qt::Key_Return);
    demand(keys == QList<int> { Qt::Key_Return }, "the window takes no key");
    demand(windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint), "the close button is grey");
    demand(close(), "the window does not close");
    demand(open(), "the window does not open again");
    return found.join(QLatin1String(", "));
}

void CoveredWindow::click(const QWidget* widget)
{
    QTest::mouseClick(windowHandle(), Qt::LeftButton, {}, widget->mapTo(this, widget->rect().center()));
}

void CoveredWindow::press(int key)
{
    QTest::keyClick(
        windowHandle(), Qt::Key(key), key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
}

VantMask* CoveredWindow::shownMask() const
{
    const auto masks = findChildren<VantMask*>();
    const auto shown =
        std::find_if(masks.begin(), masks.end(), [](VantMask* mask) { return !mask->isHidden(); });
    return shown == masks.end() ? nullptr : *shown;
}

int CoveredWindow::maskCount() const
{
    return findChildren<VantMask*>().size();
}

namespace sheets {

void startKit(const QString& userFolder)
{
    defaulttheme::load(userFolder);
    ComponentStrings::getInstance().installStrings({
        { QStringLiteral("ok"), QStringLiteral("Fine") },
        { QStringLiteral("cancel"), QStringLiteral("Back") },
        { QStringLiteral("wizard_client_upgrade"), QStringLiteral("Get it") },
    });
}

void addBothSheets()
{
    QTest::addColumn<bool>("input");
    QTest::newRow("message sheet") << false;
    QTest::newRow("input sheet") << true;
}

QPointer<VantSheet> make(bool input, QWidget* window)
{
    const QString text = QStringLiteral("Text");
    VantSheet* sheet = nullptr;
    if (input) {
        sheet = new VantInputSheet(text, window);
    } else {
        sheet = new VantMessageSheet(VantMessageSheet::Question, text, window);
    }
    VantMask::createMask(sheet, window->window());
    return sheet;
}

int exec(VantSheet* sheet)
{
    auto* message = qobject_cast<VantMessageSheet*>(sheet);
    return message ? message->exec() : qobject_cast<VantInputSheet*>(sheet)->exec();
}

void done(VantSheet* sheet, int result)
{
    QMetaObject::invokeMethod(sheet, "done", Q_ARG(int, result));
}

QPushButton* button(const QWidget* sheet, QMessageBox::StandardButton which)
{
    return sheet->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::StandardButton(which));
}

QList<MessageLabel*> texts(const QWidget* sheet)
{
    QList<MessageLabel*> found;
    const auto labels = sheet->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    for (QLabel* label : labels) {
        if (auto* text = dynamic_cast<MessageLabel*>(label)) {
            found += text;
        }
    }
    return found;
}

QLabel* icon(const QWidget* sheet)
{
    const auto labels = sheet->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    const auto found = std::find_if(
        labels.begin(), labels.end(), [](QLabel* label) { return !dynamic_cast<MessageLabel*>(label); });
    return found == labels.end() ? nullptr : *found;
}

} // namespace sheets
