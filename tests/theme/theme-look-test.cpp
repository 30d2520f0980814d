#include "support/themed-test.h"

/** How the theme looks at the scale of the display. */
class ThemeLookTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:
    void focusMovesNothing();
    void errorShows();
    void messageButtonsKeepTheirText();
    void countdownKeepsItsIcon();
};

namespace {

template <typename Option>
Option optionFor(const QWidget* widget, bool focus)
{
    Option option;
    option.initFrom(widget);
    option.rect = QRect(0, 0, 200, 60);
    option.state.setFlag(QStyle::State_HasFocus, focus);
    return option;
}

/** Where the content of a widget begins, or where its middle is, with and without the keyboard focus. */
QPoint contentOf(const QWidget* widget, bool focus)
{
    const QStyle* style = widget->style();
    const auto frame = optionFor<QStyleOptionFrame>(widget, focus);
    const auto button = optionFor<QStyleOptionButton>(widget, focus);
    const auto combo = optionFor<QStyleOptionComboBox>(widget, focus);
    return qobject_cast<const QComboBox*>(widget)
        ? style->subControlRect(QStyle::CC_ComboBox, &combo, QStyle::SC_ComboBoxEditField, widget).topLeft()
        : qobject_cast<const QLineEdit*>(widget)
        ? style->subElementRect(QStyle::SE_LineEditContents, &frame, widget).topLeft()
        : qobject_cast<const QCheckBox*>(widget)
        ? style->subElementRect(QStyle::SE_CheckBoxContents, &button, widget).topLeft()
        : style->subElementRect(QStyle::SE_PushButtonContents, &button, widget).center();
}

} // namespace

// The focus edge is wider than the edge at rest, and the padding makes up for it at every scale. The combo
// box sets its own edge and padding, not cut to whole pixels as a style sheet's are, and may be off by one.
void ThemeLookTest::focusMovesNothing()
{
    QWidget parent;
    for (int kind = 0; kind <= 5; ++kind) {
        (new VantButton("Text", kind))->setParent(&parent);
    }
    new VantCheckBox("Text", &parent);
    new VantComboBox(&parent);
    (new QComboBox(&parent))->setStyleSheet(getStyleSheet("component.date_selector"));
    for (const QString& more : { QString(), getStyleSheet("component.filter_bar_padding") }) {
        (new QLineEdit(&parent))->setStyleSheet(getStyleSheet("component.lineedit") + more);
    }
    for (auto* widget : parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        widget->ensurePolished();
        const int tolerance = qobject_cast<VantComboBox*>(widget) ? 2 : 0;
        const QPoint move = contentOf(widget, true) - contentOf(widget, false);
        QVERIFY2(move.manhattanLength() <= tolerance, qPrintable(widget->styleSheet()));
    }
}

// The error look shows with the focus too.
void ThemeLookTest::errorShows()
{
    VantLineEdit edit;
    edit.resize(200, 60);
    edit.show();
    const auto colors = [&edit] {
        const QImage image = edit.getLineEdit()->grab().toImage();
        return image.pixelColor(image.width() / 2, 0).name() + image.pixelColor(image.width() / 2, 9).name();
    };
    QCOMPARE(colors(), QString("#c8d2dc#ffffff"));
    edit.setError(true);
    QCOMPARE(colors(), QString("#c8372d#fdecea"));
    QApplication::setActiveWindow(&edit);
    edit.setFocus();
    QVERIFY(edit.hasFocus());
    QCOMPARE(colors(), QString("#c8372d#fdecea"));
}

// A box is as narrow as its text allows, whatever stands on its buttons.
void ThemeLookTest::messageButtonsKeepTheirText()
{
    QMessageBox box(QMessageBox::Question, {}, "?", QMessageBox::Ok | QMessageBox::Cancel);
    box.setStyleSheet(getStyleSheet("component.confirm_message_box"));
    box.button(QMessageBox::Ok)->setStyleSheet(getStyleSheet("component.apply_button"));
    box.button(QMessageBox::Cancel)->setStyleSheet(getStyleSheet("component.cancel_button"));
    for (QAbstractButton* button : box.buttons()) {
        button->setText("Files of this folder");
    }
    box.show();
    for (QAbstractButton* button : box.buttons()) {
        QVERIFY(button->width() >= button->sizeHint().width());
    }
}

// Under a parent with a style sheet of its own, too.
void ThemeLookTest::countdownKeepsItsIcon()
{
    QWidget parent;
    parent.setStyleSheet("QToolTip { padding: 0px; }");
    VantCountdownMessageBox below(5, &parent);
    VantCountdownMessageBox alone(5);
    below.setIcon(QMessageBox::Information);
    alone.setIcon(QMessageBox::Information);
    QCOMPARE(below.iconPixmap().toImage(), alone.iconPixmap().toImage());
}

QTEST_MAIN(ThemeLookTest)
#include "theme-look-test.moc"
