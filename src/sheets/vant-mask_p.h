#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QWidget>

class VantMask;

class VantMaskPrivate : public QObject
{
    Q_OBJECT

public:
    VantMaskPrivate(VantMask* mask, QObject* parent);

    void init(QWidget* content);

    QColor color;
    VantMask* q;
    QPointer<QWidget> widget;
};

/**
 * Watches the widget that a mask covers, and gives the mask the size of the window when
 * the widget changes its own.
 */
class ParentEventFilterWidget : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override;

    VantMask* mask = nullptr;
    QWidget* watchedParent = nullptr;
};
