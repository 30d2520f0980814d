#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QLineEdit>
#include <QMessageBox>
#include <QStyleOption>
#include <QtTest>

#include <functional>

namespace {

QImage shadow(const char* place)
{
    const QByteArray name = QByteArrayLiteral("bg_tutorial_") + place;
    return getGlobalImage(name.constData(), ImageManager::Normal)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

int alpha(const QImage& image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

template <typename Option>
Option optionFor(const QWidget* widget, bool focus)
{
    Option option;
    option.initFrom(widget);
    option.rect = QRect(0, 0, 200, 60);
    option.state.setFlag(QStyle::State_HasFocus, focus);
    return option;
}

template <typename Option>
QRect partOf(const QWidget* widget, QStyle::SubElement part, bool focus)
{
    const auto option = optionFor<Option>(widget, focus);
    return widget->style()->subElementRect(part, &option, widget);
}

/** Where the content of a widget begins, or where its middle is, with and without the keyboard focus. */
QList<QPoint> contentOf(const QWidget* widget, bool focus)
{
    if (qobject_cast<const QPushButton*>(widget)) {
        return { partOf<QStyleOptionButton>(widget, QStyle::SE_PushButtonContents, focus).center() };
    }
    if (qobject_cast<const QCheckBox*>(widget)) {
        return { partOf<QStyleOptionButton>(widget, QStyle::SE_CheckBoxContents, focus).topLeft(),
            partOf<QStyleOptionButton>(widget, QStyle::SE_CheckBoxIndicator, focus).topLeft() };
    }
    if (qobject_cast<const QRadioButton*>(widget)) {
        return { partOf<QStyleOptionButton>(widget, QStyle::SE_RadioButtonContents, focus).topLeft(),
            partOf<QStyleOptionButton>(widget, QStyle::SE_RadioButtonIndicator, focus).topLeft() };
    }
    if (qobject_cast<const QLineEdit*>(widget)) {
        const QRect text = partOf<QStyleOptionFrame>(widget, QStyle::SE_LineEditContents, focus);
        return { text.topLeft(), text.bottomRight() };
    }
    const auto option = optionFor<QStyleOptionComboBox>(widget, focus);
    const auto rectOf = [&](QStyle::SubControl part) {
        return widget->style()->subControlRect(QStyle::CC_ComboBox, &option, part, widget);
    };
    return { rectOf(QStyle::SC_ComboBoxEditField).topLeft(), rectOf(QStyle::SC_ComboBoxArrow).center() };
}

QLineEdit* field(const QString& sheet)
{
    auto* edit = new QLineEdit;
    edit->setStyleSheet(sheet);
    return edit;
}

using Maker = std::function<QWidget*()>;

} // namespace

Q_DECLARE_METATYPE(Maker)

/** How the theme looks at the scale of the display. */
class ThemeLookTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void shadowHasNoSeam_data();
    void shadowHasNoSeam();
    void shadowFallsOffDownwards();
    void focusMovesNothing_data();
    void focusMovesNothing();
    void errorShows();
    void messageButtonsKeepTheirText();
    void countdownKeepsItsIcon();

private:
    QTemporaryDir userFolder;
};

void ThemeLookTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
}

void ThemeLookTest::shadowHasNoSeam_data()
{
    QTest::addColumn<QByteArray>("beside");
    QTest::addColumn<QByteArray>("below");
    QTest::newRow("lt") << QByteArray("t") << QByteArray("l");
    QTest::newRow("rt") << QByteArray("t") << QByteArray("r");
    QTest::newRow("lb") << QByteArray("b") << QByteArray("l");
    QTest::newRow("rb") << QByteArray("b") << QByteArray("r");
}

// A corner ends as the two edges begin, and fades to nothing on its other two sides.
void ThemeLookTest::shadowHasNoSeam()
{
    QFETCH(QByteArray, beside);
    QFETCH(QByteArray, below);
    const QByteArray place(QTest::currentDataTag());
    const QImage corner = shadow(place.constData());
    const QImage horizontal = shadow(beside.constData());
    const QImage vertical = shadow(below.constData());
    QCOMPARE(corner.height(), horizontal.height());
    QCOMPARE(corner.width(), vertical.width());

    const int last = corner.width() - 1;
    const int innerColumn = place.startsWith('l') ? last : 0;
    const int innerRow = place.endsWith('t') ? last : 0;
    for (int i = 0; i <= last; ++i) {
        QVERIFY(std::abs(alpha(corner, innerColumn, i) - alpha(horizontal, 1, i)) <= 4);
        QVERIFY(std::abs(alpha(corner, i, innerRow) - alpha(vertical, i, 1)) <= 4);
        QVERIFY(alpha(corner, last - innerColumn, i) <= 2);
        QVERIFY(alpha(corner, i, last - innerRow) <= 2);
    }
}

void ThemeLookTest::shadowFallsOffDownwards()
{
    const QImage top = shadow("t");
    const QImage bottom = shadow("b");
    const int rows = bottom.height();
    QVERIFY(alpha(bottom, 1, 0) > 60 && alpha(bottom, 1, 0) <= 72);
    for (int row = 1; row < rows; ++row) {
        QVERIFY(alpha(bottom, 1, row) <= alpha(bottom, 1, row - 1));
        QVERIFY(alpha(bottom, 1, row) >= alpha(top, 1, rows - 1 - row));
    }
    QVERIFY(alpha(bottom, 1, rows / 2) > alpha(top, 1, rows / 2));
}

void ThemeLookTest::focusMovesNothing_data()
{
    QTest::addColumn<Maker>("make");
    for (int kind = 0; kind <= 5; ++kind) {
        QTest::addRow("button of kind %d", kind)
            << Maker([kind] { return new VantButton(QStringLiteral("Text"), kind); });
    }
    QTest::newRow("check box") << Maker([] { return new VantCheckBox(QStringLiteral("Text"), nullptr); });
    QTest::newRow("radio button") << Maker(
        [] { return new VantRadioButton(QStringLiteral("Text"), nullptr); });
    QTest::newRow("combo box") << Maker([] { return new VantComboBox(nullptr); });
    QTest::newRow("date selector") << Maker([] {
        auto* combo = new QComboBox;
        combo->setStyleSheet(getStyleSheet("component.date_selector", false));
        return combo;
    });
    QTest::newRow("field") << Maker([] { return field(getStyleSheet("component.lineedit", false)); });
    QTest::newRow("filter bar") << Maker([] {
        return field(getStyleSheet("component.lineedit", false)
            + getStyleSheet("component.filter_bar_padding", false));
    });
}

// The focus edge is wider than the edge at rest, and the padding makes up for it at every scale. The combo
// box sets its own edge and padding, not cut to whole pixels as a style sheet's are, and may be off by one.
void ThemeLookTest::focusMovesNothing()
{
    QFETCH(Maker, make);
    const QScopedPointer<QWidget> widget(make());
    widget->ensurePolished();
    const QList<QPoint> focused = contentOf(widget.data(), true);
    const QList<QPoint> resting = contentOf(widget.data(), false);
    const int tolerance = qobject_cast<VantComboBox*>(widget.data()) ? 2 : 0;
    for (int i = 0; i < resting.size(); ++i) {
        QVERIFY((focused[i] - resting[i]).manhattanLength() <= tolerance);
    }
}

// The error look follows a property, by "polish" alone, and shows with the focus too.
void ThemeLookTest::errorShows()
{
    const QScopedPointer<QLineEdit> edit(field(getStyleSheet("component.lineedit", false)));
    edit->resize(200, 60);
    edit->show();
    const auto colorsNow = [&edit] {
        const QImage image = edit->grab().toImage();
        return std::make_pair(
            image.pixelColor(image.width() / 2, 0).name(), image.pixelColor(image.width() / 2, 9).name());
    };
    const auto setError = [&edit](bool error) {
        edit->setProperty("error", error);
        edit->style()->polish(edit.data());
    };
    const auto rest = std::make_pair(QStringLiteral("#c8d2dc"), QStringLiteral("#ffffff"));
    const auto wrong = std::make_pair(QStringLiteral("#c8372d"), QStringLiteral("#fdecea"));
    QCOMPARE(colorsNow(), rest);
    setError(true);
    QCOMPARE(colorsNow(), wrong);
    QApplication::setActiveWindow(edit.data());
    edit->setFocus();
    QVERIFY(edit->hasFocus());
    QCOMPARE(colorsNow(), wrong);
    edit->clearFocus();
    setError(false);
    QCOMPARE(colorsNow(), rest);
}

// A box is as narrow as its text allows, whatever stands on its buttons.
void ThemeLookTest::messageButtonsKeepTheirText()
{
    QMessageBox box(
        QMessageBox::Question, QString(), QStringLiteral("?"), QMessageBox::Ok | QMessageBox::Cancel);
    box.setStyleSheet(getStyleSheet("component.confirm_message_box"));
    box.button(QMessageBox::Ok)->setStyleSheet(getStyleSheet("component.apply_button"));
    box.button(QMessageBox::Cancel)->setStyleSheet(getStyleSheet("component.cancel_button"));
    for (QAbstractButton* button : box.buttons()) {
        button->setText(QStringLiteral("Every file of this folder"));
    }
    box.show();
    for (QAbstractButton* button : box.buttons()) {
        QVERIFY(button->width() >= button->sizeHint().width());
    }
}

// Under a parent with a style sheet of its own, too.
void ThemeLookTest::countdownKeepsItsIcon()
{
    ComponentStrings::getInstance().installStrings(
        { { QStringLiteral("ok"), {} }, { QStringLiteral("cancel"), {} } });
    QWidget parent;
    parent.setStyleSheet(QStringLiteral("QToolTip { padding: 0px; }"));
    VantCountdownMessageBox below(5, &parent);
    VantCountdownMessageBox alone(5);
    for (QMessageBox* box : { &below, &alone }) {
        box->setIcon(QMessageBox::Information);
    }
    QCOMPARE(below.iconPixmap().toImage(), alone.iconPixmap().toImage());
}

QTEST_MAIN(ThemeLookTest)
#include "theme-look-test.moc"
