#include "code-window.h"

#include "controls.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int margin = 24;
const int narrowest = 480;
const int widest = 880;
const int highest = 640;

/** Sets off what is not code, comments and texts, and the classes that code stands on. */
class Highlighter : public QSyntaxHighlighter
{
public:
    explicit Highlighter(QTextDocument* document)
        : QSyntaxHighlighter(document)
    { }

protected:
    // What stands later in the list wins, so a text in a comment is a comment.
    void highlightBlock(const QString& line) override
    {
        const struct
        {
            const char* pattern;
            const char* colour;
        } rules[] = {
            { R"(\b[QV][a-zA-Z]*[a-z]\w*)", "#0B6BCB" }, // accent
            { R"("[^"]*"|<[\w/.-]+>)", "#1F7A4D" }, // success
            { R"((^|\s)(/\*\*|//).*)", "#5F6E7D" }, // ink-faint
        };

        for (const auto& rule : rules) {
            QRegularExpression pattern(QString::fromLatin1(rule.pattern));
            for (auto match = pattern.globalMatch(line); match.hasNext();) {
                const QRegularExpressionMatch found = match.next();
                setFormat(found.capturedStart(), found.capturedLength(), QColor(QLatin1String(rule.colour)));
            }
        }
    }
};

} // namespace

CodeWindow::CodeWindow(const QString& title, const QString& code, QWidget* parent)
    : QDialog(parent)
    , m_code(new QPlainTextEdit(code))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(QStringLiteral("%1 – %2").arg(title, text("window.code")));
    setStyleSheet(getStyleSheet("gallery.code") + getStyleSheet("component.scrollbar"));

    new Highlighter(m_code->document()); // the document owns it
    m_code->setFont(codeFont(13));
    m_code->setAccessibleName(text("window.code"));
    m_code->setLayoutDirection(Qt::LeftToRight);
    m_code->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_code->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_code->setTabChangesFocus(true);
    m_code->document()->setDocumentMargin(px(margin));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_code, 1);
    layout->addWidget(footbar());

    resize(sizeOfCode(code).boundedTo(parent->screen()->availableGeometry().size()));
}

// As large as the code, within reason.
QSize CodeWindow::sizeOfCode(const QString& code) const
{
    const QFontMetrics metrics = m_code->fontMetrics();
    const QSize text = metrics.size(Qt::TextExpandTabs, code) + 2 * QSize(px(margin), px(margin));
    const int foot = layout()->itemAt(1)->sizeHint().height();
    const int bars = px(24); // if they are needed
    return (text + QSize(bars, foot + bars))
        .expandedTo({ px(narrowest), 0 })
        .boundedTo({ px(widest), px(highest) });
}

QWidget* CodeWindow::footbar()
{
    m_copy = button(text("code.copy"), 0);
    m_copy->setMinimumWidth(qMax(m_copy->minimumWidth(), button(text("code.copied"), 0)->minimumWidth()));
    m_copy->setDefault(true);
    m_copy->setFocus();
    connect(m_copy, &QPushButton::clicked, this, &CodeWindow::copy);
    auto* close = button(text("window.close"), 1);
    close->setAutoDefault(true);
    connect(close, &QPushButton::clicked, this, &QWidget::close);

    auto* bar = new VantFootbar;
    bar->pushRightWidget(m_copy);
    bar->pushRightWidget(close);
    bar->init();
    bar->setMargins(margin, 12, margin, 12);
    bar->setSpacing(8);
    QFrame* foot = styledFrame("foot", "gallery.foot");
    auto* layout = new QVBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    return foot;
}

void CodeWindow::copy()
{
    QGuiApplication::clipboard()->setText(m_code->toPlainText());
    m_copy->setText(text("code.copied"));
}

} // namespace gallery
