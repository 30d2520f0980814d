#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QResizeEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int deepest = 12;
const int mostFolders = 3;

/** A path bar that looks again what fits when its width changes. */
class FittedPath : public VantButtonPath
{
public:
    explicit FittedPath(const QString& name)
    {
        setAccessibleName(name);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    void moveTo(const QString& path)
    {
        m_path = path;
        refresh(path);
    }

    QString path() const { return m_path; }

    QPushButton* folder(int place) const { return qobject_cast<QPushButton*>(cellWidget(0, 2 * place)); }

    QToolButton* hiddenFolders() const { return findChild<QToolButton*>(); }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        VantButtonPath::resizeEvent(event);
        if (event->size().width() != event->oldSize().width()) {
            refresh(m_path);
        }
    }

private:
    QString m_path;
};

class PathPage : public Page
{
public:
    explicit PathPage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void addLive();
    void addFitting();
    void addUnusual();
    FittedPath* tellingBar(const QString& key, const QString& path);
    void go(const QString& path);
    void showFolders();
    void openHiddenFolders();

    FittedPath* m_bar = nullptr;
    QLabel* m_foldersLabel = nullptr;
    QList<VantButton*> m_folders;
    FittedPath* m_long = nullptr;
};

QString joined(const QList<const char*>& keys)
{
    QStringList names;
    for (const char* key : keys) {
        names << text(key);
    }
    return names.join(QLatin1Char('/'));
}

// The folders in a folder that is so many names deep.
QStringList foldersAt(int depth)
{
    switch (depth) {
    case 1:
        return { text("path.documents"), text("path.photos"), text("path.projects") };
    case 2:
        return { QStringLiteral("2024"), QStringLiteral("2025"), QStringLiteral("2026") };
    case deepest:
        return {};
    default:
        return depth % 2 == 0
            ? QStringList { text("path.drafts"), text("path.archive") }
            : QStringList { text("path.letters"), text("path.invoices"), text("path.contracts") };
    }
}

PathPage::PathPage(QWidget* parent)
    : Page(parent)
{
    addLive();
    addFitting();
    addUnusual();
}

void PathPage::addLive()
{
    QVBoxLayout* section = addSection("path.live", "VantButtonPath");
    m_bar = live(new FittedPath(text("path.live.title")));
    connect(m_bar, &VantButtonPath::sigUpdatePath, this, &PathPage::go);
    section->addWidget(m_bar);

    m_foldersLabel = styledLabel({}, "gallery.text");
    auto* folders = new QHBoxLayout;
    folders->setSpacing(px(8));
    folders->addWidget(m_foldersLabel);
    folders->addSpacing(px(8));
    for (int count = 0; count < mostFolders; ++count) {
        VantButton* folder = live(button({}, 1));
        connect(folder, &QPushButton::clicked, this,
            [this, folder] { go(m_bar->path() + QLatin1Char('/') + folder->text()); });
        folders->addWidget(folder);
        m_folders << folder;
    }
    folders->addStretch(1);
    section->addLayout(folders);
    go(joined({ "path.backup", "path.documents" }) + QStringLiteral("/2025"));
}

void PathPage::go(const QString& path)
{
    m_bar->moveTo(path);
    showFolders();
    Q_EMIT happened(text("event.chosen").arg(path));
}

void PathPage::showFolders()
{
    const QStringList names = foldersAt(m_bar->path().count(QLatin1Char('/')) + 1);
    m_foldersLabel->setText(text(names.isEmpty() ? "path.none" : "path.folders"));
    for (int i = 0; i < mostFolders; ++i) {
        m_folders.at(i)->setText(names.value(i));
        m_folders.at(i)->setVisible(i < names.size());
    }
}

void PathPage::addFitting()
{
    const QString fitting = joined({ "path.backup", "path.photos" }) + QStringLiteral("/2026");
    const QString tooLong = joined({ "path.backup", "path.documents", "path.projects", "path.archive",
        "path.letters", "path.contracts", "path.invoices", "path.drafts" });

    QGridLayout* grid = addLiveAndDisabled(addSection("path.fit", "VantButtonPath"));
    for (const QString& path : { fitting, tooLong }) {
        m_long = live(tellingBar(QStringLiteral("path.fit.title"), path));
        FittedPath* disabled = tellingBar(QStringLiteral("state.disabled"), path);
        disabled->setEnabled(false);
        const int row = grid->rowCount();
        grid->addWidget(m_long, row, 0);
        grid->addWidget(disabled, row, 1);
    }
}

void PathPage::addUnusual()
{
    const QString path = QString::fromUtf8("R&D/Q&A && FAQ/Draft  2/100 %/Größe/Ελλάδα/Услуги/東京/서울");
    addSection("path.odd", "VantButtonPath")
        ->addWidget(live(tellingBar(QStringLiteral("path.odd.title"), path)));
}

FittedPath* PathPage::tellingBar(const QString& key, const QString& path)
{
    auto* bar = new FittedPath(text(key));
    bar->moveTo(path);
    connect(bar, &VantButtonPath::sigUpdatePath, this,
        [this](const QString& folder) { Q_EMIT happened(text("event.chosen").arg(folder)); });
    return bar;
}

void PathPage::openHiddenFolders()
{
    QToolButton* folders = m_long->hiddenFolders();
    folders->setDown(true);
    folders->menu()->popup(folders->mapToGlobal(QPoint(0, folders->height())));
    folders->menu()->setActiveAction(folders->menu()->actions().constLast());
}

void PathPage::enterState(const QString& state)
{
    if (state == QLatin1String("hover")) {
        freeze(m_bar->folder(1), Look::Hover);
        freeze(m_long->hiddenFolders(), Look::Hover);
    } else if (state == QLatin1String("focus")) {
        m_bar->folder(1)->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("hidden")) {
        openHiddenFolders();
    }
}

QWidget* PathPage::opener(const QString& state) const
{
    return state == QLatin1String("hidden") ? m_long->hiddenFolders() : nullptr;
}

} // namespace

Page* createPathPage(QWidget* parent)
{
    return new PathPage(parent);
}

} // namespace gallery
