#pragma once

//! [guide.class]
#include <QWidget>

class VantButton;
class VantTableWidget;

/** A list of tasks, from which the user can delete. */
class TaskWindow : public QWidget
{
public:
    TaskWindow();

private:
    VantTableWidget* createList();
    QWidget* createFoot();
    void addTask(const QString& name, const QString& target);
    void deleteTask();

    VantTableWidget* m_tasks = nullptr; // children of the window
    VantButton* m_delete = nullptr;
};

//! [guide.class]
