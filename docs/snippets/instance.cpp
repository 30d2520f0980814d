#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [instance]
/** Whether another process is the one that runs. It gets the request, unless it does not answer. */
bool isLeftToAnother(QtSingleApplication& application, const QString& request)
{
    if (!application.isRunning()) {
        return false; // this process is the one from now on
    }
    if (application.sendMessage(request)) {
        return true;
    }
    // If the other one has ended meanwhile, this one takes its place.
    return application.isRunning();
}

void answerOthers(QtSingleApplication& application, QWidget* window)
{
    QObject::connect(&application, &QtSingleApplication::messageReceived, window, &QWidget::setWindowTitle);
    application.setActivationWindow(window); // comes to the front with each message
}

//! [instance]
