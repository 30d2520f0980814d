#include "utils/focus-helpers.h"

#include <QWidget>

void adjustFocusPolicy(Qt::FocusPolicy policy, QList<QWidget*> widgets)
{
    for (QWidget* widget : qAsConst(widgets)) {
        widget->setFocusPolicy(policy);
    }
}

QString getHtmlEscapedStringForToolTip(const QString& text)
{
    const QString lines = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
    return QStringLiteral("<p style='white-space:pre'>") + lines + QStringLiteral("</p>");
}
