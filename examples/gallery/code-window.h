#pragma once

#include <QDialog>

class QPlainTextEdit;
class VantButton;

namespace gallery {

/** Code to read and to copy. It goes when it is closed. */
class CodeWindow : public QDialog
{
    Q_OBJECT

public:
    CodeWindow(const QString& title, const QString& code, QWidget* parent);

private:
    QWidget* footbar();
    QSize sizeOfCode(const QString& code) const;
    void copy();

    QPlainTextEdit* m_code;
    VantButton* m_copy = nullptr;
};

} // namespace gallery
