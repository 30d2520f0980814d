#include "sheets/covered-window.h"

#ifdef Q_OS_WIN
#include <windows.h>
#endif

CoveredWindow::CoveredWindow(const QSize& size)
    : field(new QLineEdit)
    , button(new QPushButton)
{
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(field);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
    resize(size);
    QVERIFY(open());
}

bool CoveredWindow::open()
{
    show();
    return QTest::qWaitFor(
        [this] {
            activateWindow(); // again and again, for window managers with other plans
            return windowHandle()->isActive();
        },
        20000);
}

QString CoveredWindow::remains()
{
    QString found;
    const auto demand = [&found](bool holds, const char* otherwise) { found += holds ? "" : otherwise; };
    demand(!shownMask(), "a mask shows, ");
    resize(size() + QSize(1, 1)); // which nothing that is gone watches
    const int clicksBefore = clicks;
    click(button);
    demand(clicks == clicksBefore + 1, "the button takes no click, ");
    field->clear();
    field->setFocus();
    press(Qt::Key_Space);
    demand(field->text() == " ", "the field takes no key, ");
    keys.clear();
    press(Qt::Key_Return);
    demand(keys == QList<int> { Qt::Key_Return }, "the window takes no key, ");
    demand(hasCloseButton(), "the close button is grey, ");
    demand(close(), "the window does not close, ");
    demand(open(), "the window does not open again, ");
    return found;
}

void CoveredWindow::click(const QWidget* widget)
{
    QTest::mouseClick(windowHandle(), Qt::LeftButton, {}, widget->mapTo(this, widget->rect().center()));
}

void CoveredWindow::press(int key)
{
    const int modifiers = key & int(Qt::KeyboardModifierMask);
    QTest::keyClick(windowHandle(), Qt::Key(key - modifiers),
        Qt::KeyboardModifiers(key == Qt::Key_Backtab ? int(Qt::ShiftModifier) : modifiers));
}

bool CoveredWindow::hasCloseButton() const
{
#ifdef Q_OS_WIN
    const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(winId()), FALSE);
    return !(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED));
#else
    return windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint);
#endif
}

VantMask* CoveredWindow::shownMask() const
{
    VantMask* shown = nullptr;
    for (VantMask* mask : findChildren<VantMask*>()) {
        shown = mask->isHidden() ? shown : mask;
    }
    return shown;
}

namespace sheets {

void addRows(std::initializer_list<const char*> words)
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>("way");
    for (const char* word : words) {
        QTest::addRow("%s, message sheet", word) << false << QByteArray(word);
        QTest::addRow("%s, input sheet", word) << true << QByteArray(word);
    }
}

QPointer<VantSheet> make(bool input, QWidget* window)
{
    VantSheet* sheet = nullptr;
    if (input) {
        sheet = new VantInputSheet("Text", window);
    } else {
        sheet = new VantMessageSheet(VantMessageSheet::Question, "Text", window);
    }
    VantMask::createMask(sheet, window->window());
    return sheet;
}

int exec(VantSheet* sheet)
{
    return asItIs(sheet, [](auto* one) { return one->exec(); });
}

void done(VantSheet* sheet, int result)
{
    asItIs(sheet, [&](auto* one) { one->done(result); });
}

QPushButton* button(VantSheet* sheet, int which)
{
    return sheet->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::StandardButton(which));
}

QList<QLabel*> labels(const QWidget* sheet)
{
    return sheet->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace sheets
