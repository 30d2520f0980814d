#include "views/item-delegate.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegExpValidator>

using vantkit::internal::designPixels;

QRect g_check_rect;

namespace {

/** The validator that goes with @p editor, which may be filled more than once. */
QValidator* fileNameValidator(QLineEdit* editor)
{
    const QLatin1String name("fileName");
    if (auto* validator = editor->findChild<QRegExpValidator*>(name, Qt::FindDirectChildrenOnly)) {
        return validator;
    }
    const QRegExp fileName(QStringLiteral(R"(^[^\.\\\/:*?"<>|][^\\\/:*?"<>|]*)"), Qt::CaseSensitive);
    auto* validator = new QRegExpValidator(fileName, editor);
    validator->setObjectName(name);
    return validator;
}

void dressEditor(QLineEdit* editor)
{
    editor->setValidator(fileNameValidator(editor));
    editor->setStyleSheet(getStyleSheet("component.tree_item", false));
    editor->setAttribute(Qt::WA_MacShowFocusRect, false);
    editor->selectAll();
}

} // namespace

ItemDelegate::ItemDelegate() = default;

bool ItemDelegate::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (keyEvent->key() == Qt::Key_Escape && !reportEscape(object, keyEvent)) {
            return true;
        }
    }
    return QItemDelegate::eventFilter(object, event);
}

/** Whether there is still something to close: a slot may delete @p editor, its view or this delegate. */
bool ItemDelegate::reportEscape(QObject* editor, QKeyEvent* event)
{
    const QPointer<QObject> delegateLeft(this);
    const QPointer<QObject> editorLeft(editor);
    Q_EMIT sigKeyPressed(event);
    return delegateLeft && editorLeft;
}

QSize ItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return { QItemDelegate::sizeHint(option, index).width(), designPixels(28) };
}

void ItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* lineEdit = qobject_cast<QLineEdit*>(editor)) {
        dressEditor(lineEdit);
    }
    QItemDelegate::setEditorData(editor, index);
}

void ItemDelegate::drawCheck(
    QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect, Qt::CheckState state) const
{
    g_check_rect = rect;
    QItemDelegate::drawCheck(painter, option, rect, state);
}
