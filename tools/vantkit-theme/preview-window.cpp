#include "preview-window.h"

#include "pictures.h"
#include "theme-files/theme-check.h"

#include <QDir>
#include <QHBoxLayout>
#include <QProcessEnvironment>
#include <QScreen>

namespace {

constexpr int widthOfList = 160;

QString titleOf(const QString& page)
{
    QString title = page;
    title.replace(QLatin1Char('-'), QLatin1Char(' '));
    title[0] = title[0].toUpper();
    return title;
}

QString fileOf(const QString& page)
{
    return QStringLiteral("theme-%1.png").arg(page);
}

} // namespace

PreviewWindow::PreviewWindow(const QString& folder, const QString& language, const QString& program)
    : m_folder(folder)
    , m_language(language)
    , m_program(program)
    , m_watch(folder)
    , m_list(new QListWidget(this))
    , m_message(new QLabel(this))
    , m_area(new QScrollArea(this))
    , m_picture(new QLabel)
{
    setWindowTitle(QStringLiteral("%1 – Theme preview").arg(QDir(folder).dirName()));
    for (const QString& page : pageNames()) {
        auto* item = new QListWidgetItem(titleOf(page), m_list);
        item->setData(Qt::UserRole, page);
    }
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setStyleSheet(QStringLiteral(
        "QListWidget { outline: none; } QListWidget::item { border: none; padding: 4px 8px; }"
        "QListWidget::item:selected { background: palette(highlight); color: palette(highlighted-text); }"));
    m_list->setFixedWidth(logicalDpiX() * widthOfList / 96);
    m_list->setCurrentRow(0);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->setStyleSheet(QStringLiteral("padding: 8px; background: #FDECEA; color: #912620;"));
    m_message->hide();
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_area->setWidget(m_picture); // which it owns now

    auto* right = new QVBoxLayout;
    right->setSpacing(0);
    right->addWidget(m_message);
    right->addWidget(m_area, 1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addWidget(m_list);
    layout->addLayout(right, 1);
    resize((QSize(1120, 720) * logicalDpiX() / 96).boundedTo(screen()->availableSize() * 9 / 10));

    connect(m_list, SIGNAL(currentRowChanged(int)), this, SLOT(showPage()));
    connect(&m_watch, SIGNAL(changed()), this, SLOT(draw()));
    connect(&m_watch, SIGNAL(broken(QString)), this, SLOT(tell(QString)));
    draw();
    const Findings findings = findBrokenFiles(m_folder);
    if (!findings.empty()) {
        tell(describe(findings.front(), m_folder));
    }
}

PreviewWindow::~PreviewWindow()
{
    stop();
}

QString PreviewWindow::currentPage() const
{
    return m_list->currentItem()->data(Qt::UserRole).toString();
}

// What is looked at comes first.
void PreviewWindow::draw()
{
    m_message->hide();
    m_waiting = pageNames();
    m_waiting.removeAll(currentPage());
    start({ currentPage() });
}

void PreviewWindow::start(const QStringList& pages)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_FONT_DPI"), QString::number(logicalDpiX()));
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(devicePixelRatioF()));
    QStringList arguments { QStringLiteral("preview"), m_folder, QStringLiteral("--lang"), m_language,
        QStringLiteral("--pictures"), m_output.path() };
    for (const QString& page : pages) {
        arguments << QStringLiteral("--page") << page;
    }
    stop(); // if the files have changed again meanwhile
    m_process = std::make_unique<QProcess>();
    m_process->setProcessEnvironment(environment);
    connect(m_process.get(), SIGNAL(finished(int, QProcess::ExitStatus)), this, SLOT(takePictures()));
    m_process->start(m_program, arguments);
}

void PreviewWindow::stop()
{
    if (m_process && m_process->state() != QProcess::NotRunning) {
        m_process->disconnect(this);
        m_process->kill();
        m_process->waitForFinished();
    }
}

void PreviewWindow::takePictures()
{
    if (m_process->exitStatus() != QProcess::NormalExit || m_process->exitCode() != 0) {
        tell(QStringLiteral("The theme cannot be shown. %1")
                 .arg(QString::fromLocal8Bit(m_process->readAllStandardError()).trimmed()));
        return;
    }
    for (const QString& page : pageNames()) {
        const QString file = m_output.filePath(fileOf(page));
        QPixmap picture(file);
        if (QFile::remove(file)) {
            picture.setDevicePixelRatio(devicePixelRatioF());
            m_pictures.insert(page, picture);
        }
    }
    showPage();
    if (!m_waiting.isEmpty()) {
        const QStringList pages = m_waiting;
        m_waiting.clear();
        // Not from within a slot of the process, which makes room for the next.
        QMetaObject::invokeMethod(
            this, [this, pages] { start(pages); }, Qt::QueuedConnection);
    }
}

// The scroll bars stay where they are as long as the picture is as large as before. Its ground goes on
// around it.
void PreviewWindow::showPage()
{
    const QPixmap picture = m_pictures.value(currentPage());
    m_picture->setPixmap(picture);
    m_picture->resize(picture.size() / picture.devicePixelRatio());
    if (!picture.isNull()) {
        QPalette ground = m_area->palette();
        ground.setColor(QPalette::Window, picture.toImage().pixelColor(0, 0));
        m_area->setPalette(ground);
    }
}

void PreviewWindow::tell(const QString& message)
{
    m_message->setText(message);
    m_message->show();
}
