// Copies what is new or changed in a folder to another one: a small application on the kit.

#include <vantkit-qt/vantkit.h>

#include <QDateTime>
#include <QDirIterator>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const char* const name = "Backup";

enum State { New, Changed, Copied };

struct File
{
    QString name; // relative to both folders
    qint64 size;
    State state;
};

bool isFolder(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

/** The files below @p folder by name, and what has become of their copies in @p target. */
std::vector<File> filesOf(const QDir& folder, const QDir& target)
{
    std::vector<File> result;
    QDirIterator files(folder.path(), QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        const QString name = folder.relativeFilePath(file.absoluteFilePath());
        const QFileInfo copy(target.filePath(name));
        const bool isSame = copy.size() == file.size() && copy.lastModified() >= file.lastModified();
        const State state = !copy.exists() ? New : isSame ? Copied : Changed;
        result.push_back(File { name, file.size(), state });
    }
    std::sort(result.begin(), result.end(), [](const File& a, const File& b) { return a.name < b.name; });
    return result;
}

/** An old copy goes only once the new one is whole. */
bool copy(const QString& name, const QDir& folder, const QDir& target)
{
    const QString to = target.filePath(name);
    const QString part = to + ".part";
    QFile::remove(part);
    return target.mkpath(QFileInfo(name).path()) && QFile::copy(folder.filePath(name), part)
        && (!QFile::exists(to) || QFile::remove(to)) && QFile::rename(part, to);
}

/** Two folders, the files of the one, and a button that copies what the other lacks. */
class BackupWindow : public QWidget
{
public:
    BackupWindow(const QString& folder, const QString& target);

private:
    VantLineEdit* addFolder(const QString& label, const QString& folder);
    void list();
    void showFile(const File& file);
    bool mayBackUp();
    void backUp();
    void copyNext();
    void finish();

    const VantTheme m_theme = VantTheme::of("default");
    VantLineEdit* m_folder;
    VantLineEdit* m_target;
    VantTableWidget* m_table;
    VantLabel* m_summary;
    VantButton* m_backUp;
    std::vector<File> m_files;
    std::vector<File> m_waiting; // for their copies, the next one last
    QStringList m_failed;
    VantMessageSheet* m_progress = nullptr; // its mask owns it
};

BackupWindow::BackupWindow(const QString& folder, const QString& target)
{
    setWindowTitle(name);
    resize(QSize(760, 480) * DPIinfo::getInstance().getDPI());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 12, 0, 0);
    m_folder = addFolder("&Folder", folder);
    m_target = addFolder("&Copies in", target);
    VantTableColumnsInfo columns;
    columns.addColumn("Name", 200, true, 1.0);
    columns.addColumn("Size", 90);
    columns.addColumn("State", 110);
    m_table = new VantTableWidget(columns);
    layout->addWidget(m_table, 1);
    auto* foot = new VantFootbar;
    m_summary = new VantLabel;
    m_backUp = new VantButton("Back up", 0);
    foot->pushLeftWidget(m_summary);
    foot->pushRightWidget(m_backUp);
    foot->init();
    layout->addWidget(foot);
    connect(m_backUp, &QPushButton::clicked, this, &BackupWindow::backUp);
    list();
}

VantLineEdit* BackupWindow::addFolder(const QString& label, const QString& folder)
{
    auto* field = new VantLineEdit;
    field->setSpacing(8);
    field->getPreLabel()->setText(label);
    field->getPreLabel()->setMinimumWidth(fontMetrics().horizontalAdvance("Copies in: "));
    field->getLineEdit()->setText(QDir::toNativeSeparators(folder));
    field->setValidator(isFolder);
    connect(field->getLineEdit(), &QLineEdit::editingFinished, this, &BackupWindow::list);
    auto* choose = new VantButton("Choose...", 1);
    connect(choose, &QPushButton::clicked, this, [this, field] {
        const QString chosen = QFileDialog::getExistingDirectory(this, {}, field->getEditText());
        if (!chosen.isEmpty()) {
            field->getLineEdit()->setText(QDir::toNativeSeparators(chosen));
            list();
        }
    });
    auto* row = new QHBoxLayout;
    row->setContentsMargins(20, 0, 20, 0);
    row->addWidget(field, 1);
    row->addWidget(choose);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return field;
}

void BackupWindow::list()
{
    m_folder->setError(!m_folder->validate() && !m_folder->getEditText().isEmpty());
    const QString target = m_target->validate() ? m_target->getEditText() : QDir::tempPath() + "/nowhere";
    m_files = m_folder->validate() ? filesOf(m_folder->getEditText(), target) : std::vector<File>();
    m_table->getTable()->setRowCount(0);
    int count = 0;
    qint64 bytes = 0;
    for (const File& file : m_files) {
        showFile(file);
        count += file.state == Copied ? 0 : 1;
        bytes += file.state == Copied ? 0 : file.size;
    }
    const QString size = QLocale().formattedDataSize(bytes, 1);
    m_summary->setText(QString("%1 of %2 files to copy, %3").arg(count).arg(m_files.size()).arg(size));
    m_backUp->setEnabled(count > 0);
}

void BackupWindow::showFile(const File& file)
{
    static const char* const states[] = { "New", "Changed", "Backed up" };
    const QString texts[] = { file.name, QLocale().formattedDataSize(file.size, 1), states[file.state] };
    QTableWidget* table = m_table->getTable();
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < 3; ++column) {
        table->setItem(row, column, new QTableWidgetItem(texts[column])); // the table owns it
    }
    table->item(row, 0)->setIcon(m_theme.fileTypeIcon(QFileInfo(file.name).suffix()));
    table->item(row, 1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

/** Whether there is a place for the copies, and older ones may be replaced. */
bool BackupWindow::mayBackUp()
{
    const QString target = QFileInfo(m_target->getEditText()).absoluteFilePath();
    const QString inFolder = QDir(m_folder->getEditText()).relativeFilePath(target);
    const bool isGood = m_target->validate() && (inFolder.startsWith("..") || QDir::isAbsolutePath(inFolder));
    m_target->setError(!isGood);
    if (!isGood) {
        showWarningMsg(name, "The copies need a folder outside of the one to back up.", this);
        return false;
    }
    const auto older =
        std::count_if(m_files.begin(), m_files.end(), [](const File& file) { return file.state == Changed; });
    return older == 0
        || showConfirmMsg(name, QString("Replace older copies (%1)?").arg(older), this) == QMessageBox::Ok;
}

void BackupWindow::backUp()
{
    if (!mayBackUp()) {
        return;
    }
    std::copy_if(m_files.rbegin(), m_files.rend(), std::back_inserter(m_waiting),
        [](const File& file) { return file.state != Copied; });
    m_progress = new VantMessageSheet({}, m_theme.movie(), this);
    VantMask::createMask(m_progress, this);
    m_progress->showSheetWithBlock();
    copyNext();
}

// One file in each turn of the event loop, so that the window stays alive.
void BackupWindow::copyNext()
{
    if (m_waiting.empty()) {
        return finish();
    }
    const QString file = m_waiting.back().name;
    m_waiting.pop_back();
    m_progress->setText("Copying " + file.toHtmlEscaped());
    if (!copy(file, m_folder->getEditText(), m_target->getEditText())) {
        m_failed << file.toHtmlEscaped();
    }
    QTimer::singleShot(0, this, &BackupWindow::copyNext);
}

void BackupWindow::finish()
{
    m_progress->done(0);
    m_progress->parentWidget()->deleteLater(); // the mask, and the sheet with it
    list();
    if (m_failed.isEmpty()) {
        showInfoMsg(name, "Everything is backed up.", this);
    } else {
        showWarningMsg(name, "These files could not be copied:", m_failed.mid(0, 5).join("<br>"), this);
    }
    m_failed.clear();
}

} // namespace

// backup [FOLDER [TARGET [PICTURE]]]: with a third name, writes a picture of its window there and ends.
int main(int argc, char** argv)
{
    QtSingleApplication application(argc, argv);
    const QStringList names = QApplication::arguments().mid(1);
    // A second start brings the window of the first to the front.
    if (names.size() < 3 && application.isRunning() && application.sendMessage("show")) {
        return 0;
    }
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!VantTheme::of("default").start(data, "enu")) {
        return 1;
    }
    BackupWindow window(names.value(0), names.value(1));
    if (names.size() == 3) {
        return window.grab().save(names[2], "PNG") ? 0 : 1;
    }
    application.setActivationWindow(&window);
    window.show();
    return QApplication::exec();
}
