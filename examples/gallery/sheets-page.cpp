#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

namespace gallery {

namespace {

const int columnWidth = 136;
const int filesToCopy = 12;
const int timePerFile = 250;
const int times[] = { 10, 5, 30 };

enum class Work { Runs, StandsStill };

struct Function
{
    const char* call;
    const char* name;
    std::function<QString(QWidget* parent)> show; // returns the answer, if it gives one
};

struct Kind
{
    VantMessageSheet::MessageType type;
    const char* name;
    const char* words;
};

const Kind kinds[] = {
    { VantMessageSheet::Information, "Information", "labels.information" },
    { VantMessageSheet::Warning, "Warning", "labels.warning" },
    { VantMessageSheet::Question, "Question", "labels.question" },
    { VantMessageSheet::Upgrading, "Upgrading", "sheets.upgrade" },
    { VantMessageSheet::WarningQuestion, "WarningQuestion", "sheets.delete" },
};

class SheetsPage : public Page
{
public:
    explicit SheetsPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    void addFunctions();
    VantButton* openButton(const Function& function, bool inWindow);
    void addKinds();
    void openKind();
    void addWork();
    int openWork(VantMessageSheet& sheet, Work work);
    void openProcessing(Work work);
    void openMovie(Work work);
    void addInput();
    void openInput();
    void addCountdown();
    void openCountdown();
    void told(const QString& name, const QString& answer);

    VantComboBox* m_kind = nullptr;
    VantCheckBox* m_more = nullptr;
    VantCheckBox* m_long = nullptr;
    QLabel* m_folder = nullptr;
    QString m_folderName = text("sheets.input.folder");
    VantComboBox* m_seconds = nullptr;
};

QString part(const char* words, const char* which)
{
    return text(QLatin1String(words) + QLatin1String(which));
}

QString nameOf(int answer)
{
    switch (answer) {
    case QMessageBox::Ok:
        return QStringLiteral("QMessageBox::Ok");
    case QMessageBox::Cancel:
        return QStringLiteral("QMessageBox::Cancel");
    case QMessageBox::Discard:
        return QStringLiteral("QMessageBox::Discard");
    }
    return QString::number(answer);
}

const QList<Function>& functions()
{
    static const QList<Function> table = {
        { "showInfoMsg", "sheets.information",
            [](QWidget* parent) {
                showInfoMsg(text("sheets.information"), text("labels.information.text"), parent);
                return QString();
            } },
        { "showWarningMsg", "sheets.warning",
            [](QWidget* parent) {
                showWarningMsg(text("sheets.warning"), text("labels.warning.text"), parent);
                return QString();
            } },
        { "showWarningMsg", "sheets.warning.more",
            [](QWidget* parent) {
                showWarningMsg(
                    text("sheets.warning"), text("labels.warning.text"), text("labels.warning.more"), parent);
                return QString();
            } },
        { "showConfirmMsg", "sheets.question",
            [](QWidget* parent) {
                return nameOf(showConfirmMsg(text("sheets.question"), text("labels.question.text"), parent));
            } },
        { "showConfirmMsgCustomBtn", "sheets.question.buttons",
            [](QWidget* parent) {
                return nameOf(showConfirmMsgCustomBtn(text("sheets.question"), text("sheets.delete.text"),
                    { text("sheets.delete.yes"), text("sheets.delete.no") }, parent));
            } },
        { "showUpgradingMsg", "sheets.upgrade",
            [](QWidget* parent) {
                showUpgradingMsg(text("sheets.upgrade"), text("sheets.upgrade.text"), parent);
                return QString();
            } },
    };
    return table;
}

SheetsPage::SheetsPage(QWidget* parent)
    : Page(parent)
{
    addFunctions();
    addKinds();
    addWork();
    addInput();
    addCountdown();
}

void SheetsPage::told(const QString& name, const QString& answer)
{
    Q_EMIT happened(
        answer.isEmpty() ? text("event.returned").arg(name) : text("event.answered").arg(name, answer));
}

void SheetsPage::addFunctions()
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(8));
    grid->setVerticalSpacing(px(12));
    grid->setColumnStretch(0, 1);
    int column = 1;
    for (const char* road : { "sheets.inside", "sheets.outside" }) {
        grid->addWidget(styledLabel(text(road), "gallery.caption"), 0, column, Qt::AlignCenter);
        grid->setColumnMinimumWidth(column++, px(columnWidth));
    }
    for (const Function& function : functions()) {
        auto* words = new QVBoxLayout;
        words->setSpacing(0);
        words->addWidget(styledLabel(text(function.name), "gallery.text"));
        words->addWidget(styledLabel(QLatin1String(function.call), "gallery.caption"));
        const int row = grid->rowCount();
        grid->addLayout(words, row, 0, Qt::AlignVCenter);
        grid->addWidget(openButton(function, true), row, 1, Qt::AlignCenter);
        grid->addWidget(openButton(function, false), row, 2, Qt::AlignCenter);
    }
    addSection("sheets.functions", "VantMessageSheet")->addLayout(grid);
}

VantButton* SheetsPage::openButton(const Function& function, bool inWindow)
{
    VantButton* open = live(button(text("sheets.open"), 1));
    open->setAccessibleName(QStringLiteral("%1, %2").arg(
        text(function.name), text(inWindow ? "sheets.inside" : "sheets.outside")));
    connect(open, &QPushButton::clicked, this, [this, function, inWindow] {
        told(QLatin1String(function.call), function.show(inWindow ? this : nullptr));
    });
    return open;
}

void SheetsPage::addKinds()
{
    m_kind = live(comboBox(text("sheets.kinds.type"), {}, 200));
    for (const Kind& kind : kinds) {
        m_kind->addItem(QLatin1String(kind.name));
    }
    m_more = live(new VantCheckBox(text("sheets.kinds.more")));
    m_more->setChecked(true);
    m_long = live(new VantCheckBox(text("sheets.kinds.long")));
    VantButton* open = live(button(text("sheets.open"), 1));
    connect(open, &QPushButton::clicked, this, &SheetsPage::openKind);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    row->addLayout(labelled(text("sheets.kinds.type"), m_kind));
    row->addWidget(m_more);
    row->addWidget(m_long);
    row->addStretch(1);
    row->addWidget(open);
    addSection("sheets.kinds", "VantMessageSheet")->addLayout(row);
}

void SheetsPage::openKind()
{
    const Kind& kind = kinds[m_kind->currentIndex()];
    QString more = m_more->isChecked() ? part(kind.words, ".more") : QString();
    if (m_long->isChecked()) {
        more = QStringList { text("sample.long"), text("labels.information.more"), text("sheets.kinds.path"),
            text("labels.warning.more"), text("sample.long") }
                   .join(QStringLiteral("<br>"));
    }
    VantMessageSheet sheet(kind.type, part(kind.words, ".text"), more, this);
    VantMask::createMask(&sheet, window());
    told(QLatin1String(kind.name), nameOf(sheet.exec()));
}

void SheetsPage::addWork()
{
    VantButton* icon = live(button(text("sheets.work.icon"), 1));
    connect(icon, &QPushButton::clicked, this, [this] { openProcessing(Work::Runs); });
    VantButton* movie = live(button(text("sheets.work.movie"), 1));
    connect(movie, &QPushButton::clicked, this, [this] { openMovie(Work::Runs); });

    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    row->addWidget(icon);
    row->addWidget(movie);
    row->addStretch(1);
    addSection("sheets.work", "VantMessageSheet")->addLayout(row);
}

// The user cannot leave a sheet without buttons: whoever opened it takes it down.
int SheetsPage::openWork(VantMessageSheet& sheet, Work work)
{
    int file = 1;
    QTimer clock;
    connect(&clock, &QTimer::timeout, &sheet, [&sheet, &file] {
        if (++file > filesToCopy) {
            sheet.quit();
        } else {
            sheet.setText(text("sheets.work.text").arg(file).arg(filesToCopy));
        }
    });
    if (work == Work::Runs) {
        clock.start(timePerFile);
    }
    VantMask::createMask(&sheet, window());
    return sheet.exec();
}

void SheetsPage::openProcessing(Work work)
{
    VantMessageSheet sheet(
        VantMessageSheet::Processing, text("sheets.work.text").arg(1).arg(filesToCopy), this);
    told(QStringLiteral("Processing"), nameOf(openWork(sheet, work)));
}

void SheetsPage::openMovie(Work work)
{
    const QString movie = ImageManager::getInstance().getImageFolder() + QStringLiteral("/processing.gif");
    VantMessageSheet sheet(text("sheets.work.text").arg(1).arg(filesToCopy), movie, this);
    told(QStringLiteral("ProcessingMovie"), nameOf(openWork(sheet, work)));
}

void SheetsPage::addInput()
{
    m_folder = styledLabel(m_folderName, "gallery.text");
    m_folder->setTextFormat(Qt::PlainText);
    VantButton* rename = live(button(text("sheets.input.rename"), 1));
    connect(rename, &QPushButton::clicked, this, &SheetsPage::openInput);

    auto* icon = new QLabel;
    icon->setPixmap(getGlobalImage("folder"));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    row->addWidget(icon);
    row->addWidget(m_folder, 1);
    row->addWidget(rename);
    addSection("sheets.input", "VantInputSheet")->addLayout(row);
}

void SheetsPage::openInput()
{
    VantInputSheet sheet(text("sheets.input.prompt"), this);
    sheet.getLineEdit()->setText(m_folderName);
    sheet.getLineEdit()->selectAll();
    VantMask::createMask(&sheet, window());
    const int answer = sheet.exec();
    if (answer == QMessageBox::Ok) {
        m_folderName = sheet.getContent();
        m_folder->setText(m_folderName);
    }
    told(QStringLiteral("VantInputSheet"), nameOf(answer));
}

void SheetsPage::addCountdown()
{
    m_seconds = live(comboBox(text("sheets.countdown.time"), {}, 136));
    for (int seconds : times) {
        m_seconds->addItem(text("sheets.countdown.seconds").arg(seconds), seconds);
    }
    VantButton* open = live(button(text("sheets.open"), 1));
    connect(open, &QPushButton::clicked, this, &SheetsPage::openCountdown);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    row->addLayout(labelled(text("sheets.countdown.time"), m_seconds));
    row->addStretch(1);
    row->addWidget(open);
    addSection("sheets.countdown", "VantCountdownMessageBox")->addLayout(row);
}

void SheetsPage::openCountdown()
{
    VantCountdownMessageBox box(m_seconds->currentData().toInt(), window());
    box.setWindowTitle(text("sheets.countdown.title"));
    box.setIcon(QMessageBox::Information);
    box.setText(text("sheets.countdown.text"));
    box.setInformativeText(text("sheets.countdown.more"));
    box.setEscapeButton(QMessageBox::Discard); // which a box does not take for its way out by itself
    told(QStringLiteral("VantCountdownMessageBox"), nameOf(box.exec()));
}

void SheetsPage::enterState(const QString& state)
{
    for (int kind = 0; kind < m_kind->count(); ++kind) {
        if (m_kind->itemText(kind).compare(state, Qt::CaseInsensitive) == 0) {
            m_kind->setCurrentIndex(kind);
            openKind();
        }
    }
    if (state == QLatin1String("long")) {
        m_long->setChecked(true);
        openKind();
    } else if (state == QLatin1String("processing")) {
        openProcessing(Work::StandsStill);
    } else if (state == QLatin1String("movie")) {
        openMovie(Work::StandsStill);
    } else if (state == QLatin1String("input")) {
        openInput();
    } else if (state == QLatin1String("box")) {
        functions().at(4).show(nullptr);
    } else if (state == QLatin1String("countdown")) {
        openCountdown();
    }
}

} // namespace

Page* createSheetsPage(QWidget* parent)
{
    return new SheetsPage(parent);
}

} // namespace gallery
