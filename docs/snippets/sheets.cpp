#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QLineEdit>
#include <QTimer>

//! [sheets.functions]
bool isDeletionWanted(const QString& name, QWidget* window)
{
    const QString question = QString("Delete %1?").arg(name.toHtmlEscaped());
    return showConfirmMsgCustomBtn("Delete", question, { "Delete", "Keep" }, window) == QMessageBox::Ok;
}

//! [sheets.functions]

//! [sheets.kinds]
bool isRestoreWanted(QWidget* window)
{
    VantMessageSheet sheet(VantMessageSheet::WarningQuestion, "Restore all files?",
        "Files that have changed since are overwritten.", window);
    VantMask::createMask(&sheet, window);
    return sheet.exec() == QMessageBox::Ok;
}

//! [sheets.kinds]

//! [sheets.work]
void waitForCopy(QTimer* work, QWidget* window)
{
    VantMessageSheet sheet("Copying files", VantTheme::of("default").movie(), window);
    VantMask::createMask(&sheet, window);
    // The sheet has no button: whoever knows that the work is done takes it down.
    QObject::connect(work, &QTimer::timeout, &sheet, &VantMessageSheet::quit);
    work->start();
    sheet.exec();
}

//! [sheets.work]

//! [sheets.input]
QString askForName(const QString& name, QWidget* window)
{
    VantInputSheet sheet("The new name of the folder:", window);
    sheet.getLineEdit()->setText(name);
    sheet.getLineEdit()->selectAll();
    VantMask::createMask(&sheet, window);
    return sheet.exec() == QMessageBox::Ok ? sheet.getContent() : name;
}

//! [sheets.input]

//! [sheets.countdown]
bool mayShutDown(QWidget* window)
{
    VantCountdownMessageBox box(30, window); // after which Ok is pressed
    box.setWindowTitle("Shut down");
    box.setIcon(QMessageBox::Information);
    box.setText("The backup is complete. The computer shuts down.");
    box.setEscapeButton(QMessageBox::Discard);
    return box.exec() == QMessageBox::Ok;
}

//! [sheets.countdown]
