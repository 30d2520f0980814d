#pragma once

#include <QString>

class QTimer;
class QTreeWidgetItem;
class QWidget;
class QtSingleApplication;
class VantCalanderView;
class VantTreeWidget;

// What the documents show, to be called by what runs it. A file is called after the page of the gallery that
// has the same widgets, and a snippet after its section.

QWidget* createPushButtons();
QWidget* createIconButton();

QWidget* createCheckBoxes();
QWidget* createRadioButtons();
QWidget* createComboBox();
QWidget* createMenu();

QWidget* createField();
QWidget* createTestedField();

QWidget* createWrappedLabel();
QWidget* createMessage();
QWidget* createLink();

QWidget* createFootBar();

QWidget* createPathBar();
QWidget* createLongPathBar();
QWidget* createOddPathBar();

bool isDeletionWanted(const QString& name, QWidget* window);
bool isRestoreWanted(QWidget* window);
void waitForCopy(QTimer* work, QWidget* window);
QString askForName(const QString& name, QWidget* window);
bool mayShutDown(QWidget* window);

QWidget* createTable();

QWidget* createPagedList();
QWidget* createBarInTheMiddle();

VantTreeWidget* createFolderTree();
void showFolder(VantTreeWidget* tree, QTreeWidgetItem* folder);

VantCalanderView* createCalendar();
QWidget* createLimitedCalendar();

QWidget* createDateSelector();
QWidget* createSpan();

QWidget* createFilteredList();
QWidget* createFilterBar();
QWidget* createFileIcons();

QWidget* createFileBrowser(const QString& folder);

void showHelp(const QString& helpFolder, QWidget* window);

bool isLeftToAnother(QtSingleApplication& application, const QString& request);
void answerOthers(QtSingleApplication& application, QWidget* window);
