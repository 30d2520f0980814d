#pragma once

#include "vantkit-export.h"

#include <QStringList>
#include <QTableWidget>

#include <memory>

class QPushButton;
class QSignalMapper;
class QToolButton;

/**
 * A folder path as a row of buttons with arrows between them, one button for each folder.
 *
 * A click on a folder emits sigUpdatePath() and changes nothing by itself: an application that moves
 * there calls refresh() with the new path, from the slot if it likes. When the row is wider than the
 * bar, the bar scrolls to its end, and a small button at its left edge opens a menu of the folders
 * that are then out of view.
 *
 * The column of the table is also the id of a folder: the folder at place k of the path stands in column 2k,
 * the arrow behind it in column 2k + 1. The bar is 28 design pixels high.
 *
 * Tab reaches the folder button and the names that are in view, Left and Right move among these,
 * Space and Return click. When the row is rebuilt while it has the keyboard focus, the focus
 * stays at its place in the row.
 *
 * Style keys "component.button_path" for the bar, "component.button_path_name_button",
 * "component.button_path_arrow", "component.button_path_change_folder_btn" and, for the menu,
 * "component.menu". Images "folder" and "bt_next".
 */
class VANTKIT_EXPORT VantButtonPath : public QTableWidget
{
    Q_OBJECT

public:
    /** An empty bar. It has a width only once a layout or the caller gives it one. */
    explicit VantButtonPath(QWidget* parent = nullptr);
    ~VantButtonPath() override;

    /**
     * Rebuilds the row for @p path, whose separator is "/". Empty parts count for nothing, so a path of
     * nothing but separators leaves the bar empty.
     *
     * Whether the row fits is decided here and now, by the width that the bar has been laid out with. Call
     * this again after the bar was first shown or resized.
     */
    void refresh(QString path);

    /**
     * The path from the first folder to column @p btn_id, without a "/" in front; it ends with one if the
     * column is an arrow's. Empty for a negative @p btn_id, which must be less than columnCount().
     */
    QString getPath(int btn_id);

    /**
     * Shows the button of hidden folders, fills its menu and scrolls to the end of the row.
     * @param totalWidth the width of the row in pixels, larger than the bar's. refresh()
     * calls this when it has to.
     */
    void setChangeFolderBtn(int totalWidth);

    /**
     * Gives the arrows their width and calls setChangeFolderBtn() if the row does not fit. Part of refresh().
     */
    void updateColumnSize();

public Q_SLOTS:
    /** The same as refresh(). */
    void slotUpdatePath(QString path);

    /** Emits sigUpdatePath() with the path of column @p btn_id. */
    void slotPathBarClicked(int btn_id);

Q_SIGNALS:
    /**
     * A folder was clicked or chosen from the menu. @p path is as getPath() gives it. A slot may call
     * refresh(), run an event loop or delete the bar.
     */
    void sigUpdatePath(QString path);

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void dressFolderButton();
    void removeRow(const QWidget* spared);
    void disconnectNames();
    void clearMenu();
    void buildRow();
    QPushButton* createNameButton(int column);
    QPushButton* createArrow();
    int columnOf(const QWidget* widget) const;
    void focusColumn(int column);

    QStringList m_names;
    QToolButton* changeFolderBtn;
    int viewWidth = 0;
    QSignalMapper* pathMapper;
    QSignalMapper* menuMapper;
    // What a deleted bar leaves to those of its clicks that have not returned.
    std::shared_ptr<QObjectList> m_leftToClicks;
};
