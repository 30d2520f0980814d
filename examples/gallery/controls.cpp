#include "controls.h"

#include "texts.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/utils/dpi-info.h>
#include <vantkit-qt/widgets/vant-button.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>

namespace gallery {

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

QLabel* styledLabel(const QString& text, const char* key)
{
    auto* label = new QLabel(text);
    label->setStyleSheet(getStyleSheet(key));
    return label;
}

QLabel* wrappedLabel(const QString& text, const char* key)
{
    QLabel* label = styledLabel(text, key);
    label->setWordWrap(true);
    return label;
}

QFrame* styledFrame(const char* name, const char* key)
{
    auto* frame = new QFrame;
    frame->setObjectName(QLatin1String(name));
    frame->setStyleSheet(getStyleSheet(key));
    return frame;
}

VantButton* button(const QString& text, int kind)
{
    auto* button = new VantButton(text, kind);
    button->setMinimumWidth(qMax(px(80), button->sizeHint().width()));
    return button;
}

VantComboBox* comboBox(const QString& name, const QStringList& entries, int width)
{
    auto* box = new VantComboBox;
    box->setAccessibleName(name);
    box->addItems(entries);
    box->setFixedWidth(px(width));
    return box;
}

const char* eventOf(Qt::CheckState state)
{
    switch (state) {
    case Qt::Checked:
        return "event.on";
    case Qt::PartiallyChecked:
        return "event.partial";
    case Qt::Unchecked:
        break;
    }
    return "event.off";
}

QLayout* labelled(const QString& text, QWidget* widget)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    QLabel* label = styledLabel(text, "gallery.text");
    label->setBuddy(widget);
    row->addWidget(label);
    row->addWidget(widget);
    return row;
}

QGridLayout* addLiveAndDisabled(QVBoxLayout* section)
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(12));
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->addWidget(styledLabel(text("state.live"), "gallery.caption"), 0, 0);
    grid->addWidget(styledLabel(text("state.disabled"), "gallery.caption"), 0, 1);
    section->addLayout(grid);
    return grid;
}

void addPair(QGridLayout* grid, QWidget* live, QWidget* disabled)
{
    disabled->setEnabled(false);
    const int row = grid->rowCount();
    grid->addWidget(live, row, 0, Qt::AlignLeft);
    grid->addWidget(disabled, row, 1, Qt::AlignLeft);
}

void openMenu(QToolButton* button)
{
    QMenu* menu = button->menu();
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    menu->setActiveAction(menu->actions().constFirst());
}

void freeze(QAbstractButton* button, Look look)
{
    button->setFocusPolicy(Qt::NoFocus);
    button->setAttribute(Qt::WA_TransparentForMouseEvents);
    button->setDown(look == Look::Pressed);
    button->setEnabled(look != Look::Disabled);
    if (look == Look::Hover) {
        button->ensurePolished();
        button->setAttribute(Qt::WA_UnderMouse);
        QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &move);
    }
}

} // namespace gallery
