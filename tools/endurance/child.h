#pragma once

#include <QProcess>

/** A participant, in a process of its own, as a driver sees it. What goes wrong with it is a Failure. */
class Child
{
public:
    /** Starts it; the first line that it says is "ready". */
    explicit Child(const QString& identity);
    ~Child();

    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void tell(const QString& command);

    /** What it says next; waits for it. */
    QByteArray line();

    /** Waits for the next line, which has to be this one. */
    void expect(const QByteArray& line);

    void kill();

    /** What else it says until it ends, which has to be in order and without a warning. */
    QList<QByteArray> rest();

private:
    bool isRunning() const;
    void demandSilence();

    QProcess m_process;
};
