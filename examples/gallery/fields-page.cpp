#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int fieldWidth = 200;

struct TestedField
{
    VantLineEdit* edit;
    QString rule;
};

class FieldsPage : public Page
{
public:
    explicit FieldsPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    void addRows();
    void addTests();
    void addTestedField(
        QVBoxLayout* section, const char* key, const QString& start, bool (*test)(const QString&));
    void check();
    void showComplaint(const TestedField& field);

    VantLineEdit* m_first = nullptr;
    QList<TestedField> m_tested;
};

bool isComputerName(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?$"));
    return pattern.match(name).hasMatch();
}

bool isPort(const QString& number)
{
    const int port = number.toInt();
    return port >= 1 && port <= 65535;
}

bool isNumberOfDays(const QString& number)
{
    const int days = number.toInt();
    return days >= 1 && days <= 365;
}

VantLineEdit* lineEdit(const char* before, const QString& content, const char* behind = nullptr)
{
    auto* edit = new VantLineEdit;
    edit->setSpacing(8);
    edit->getPreLabel()->setText(text(before));
    edit->getLineEdit()->setAccessibleName(text(before));
    edit->getLineEdit()->setText(content);
    edit->getLineEdit()->setFixedWidth(px(fieldWidth));
    edit->getPostLabel()->setText(behind ? text(behind) : QString());
    return edit;
}

VantLineEdit* nameRow()
{
    return lineEdit("fields.name", text("fields.name.content"));
}

VantLineEdit* daysRow()
{
    return lineEdit("fields.days", QStringLiteral("30"), "fields.days.unit");
}

VantLineEdit* passwordRow()
{
    VantLineEdit* edit = lineEdit("fields.password", QStringLiteral("password"));
    edit->getLineEdit()->setEchoMode(QLineEdit::Password);
    return edit;
}

VantLineEdit* readOnlyRow()
{
    VantLineEdit* edit = lineEdit("fields.address", QStringLiteral("192.0.2.17"));
    edit->getLineEdit()->setReadOnly(true);
    return edit;
}

// The fields begin below one another, whatever the words before them.
void alignFields(const QList<VantLineEdit*>& edits)
{
    int widest = 0;
    for (VantLineEdit* edit : edits) {
        widest = qMax(widest, edit->getPreLabel()->sizeHint().width());
    }
    for (VantLineEdit* edit : edits) {
        edit->getPreLabel()->setFixedWidth(widest);
    }
}

FieldsPage::FieldsPage(QWidget* parent)
    : Page(parent)
{
    addRows();
    addTests();
    alignFields(findChildren<VantLineEdit*>());
}

void FieldsPage::addRows()
{
    QGridLayout* grid = addLiveAndDisabled(addSection("fields.row", "VantLineEdit"));
    for (auto* row : { nameRow, daysRow, passwordRow, readOnlyRow }) {
        VantLineEdit* edit = live(row());
        m_first = m_first ? m_first : edit;
        addPair(grid, edit, row());
    }
}

void FieldsPage::addTests()
{
    QVBoxLayout* section = addSection("fields.test", "VantLineEdit");
    addTestedField(section, "fields.computer", QStringLiteral("backup-server"), isComputerName);
    addTestedField(section, "fields.port", QStringLiteral("5510"), isPort);
    addTestedField(section, "fields.days", QStringLiteral("30"), isNumberOfDays);
    VantButton* test = live(button(text("fields.check"), 0));
    connect(test, &QPushButton::clicked, this, &FieldsPage::check);
    section->addSpacing(px(4));
    section->addWidget(test, 0, Qt::AlignLeft);
}

void FieldsPage::addTestedField(
    QVBoxLayout* section, const char* key, const QString& start, bool (*test)(const QString&))
{
    const TestedField field { live(lineEdit(key, start)), text(QLatin1String(key) + QLatin1String(".rule")) };
    field.edit->setValidator(test);
    field.edit->getPostLabel()->setStyleSheet(getStyleSheet("gallery.error"));
    // A complaint goes as soon as its cause does; a new one comes with the next check only.
    connect(field.edit->getLineEdit(), &QLineEdit::textEdited, this, [this, field] {
        if (field.edit->validate()) {
            showComplaint(field);
        }
    });
    connect(field.edit->getLineEdit(), &QLineEdit::returnPressed, this, &FieldsPage::check);
    section->addWidget(field.edit);
    m_tested << field;
}

void FieldsPage::showComplaint(const TestedField& field)
{
    const bool wrong = !field.edit->validate();
    field.edit->setError(wrong);
    field.edit->getLineEdit()->setAccessibleDescription(wrong ? field.rule : QString());
    field.edit->getPostLabel()->setText(wrong ? field.rule : QString());
}

void FieldsPage::check()
{
    QLineEdit* firstWrong = nullptr;
    for (const TestedField& field : qAsConst(m_tested)) {
        showComplaint(field);
        if (!firstWrong && !field.edit->validate()) {
            firstWrong = field.edit->getLineEdit();
        }
    }
    if (firstWrong) {
        firstWrong->setFocus(Qt::OtherFocusReason);
        firstWrong->selectAll();
    }
    Q_EMIT happened(text(firstWrong ? "fields.wrong" : "fields.right"));
}

void FieldsPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_first->getLineEdit()->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("error")) {
        m_tested[1].edit->getLineEdit()->setText(QStringLiteral("70000"));
        m_tested[2].edit->getLineEdit()->clear();
        check();
    }
}

} // namespace

Page* createFieldsPage(QWidget* parent)
{
    return new FieldsPage(parent);
}

} // namespace gallery
