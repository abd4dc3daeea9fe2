// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: docks around the image, and the menus.
#ifndef KESTROVA_MAINWINDOW_H
#define KESTROVA_MAINWINDOW_H

#include <QtCore/QHash>
#include <QtWidgets/QMainWindow>

class EventLog;
class QAction;
class QActionGroup;
class QMenu;
class QSettings;
class TakeOvers;

/// Builds the window and knows how it was arranged. What the menus trigger beyond the window is announced.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(const TakeOvers& takeOvers, EventLog& log);

    /// Where further docks put what shows and hides them.
    QMenu& docksMenu() { return *viewMenu; }
    QMenu& camerasMenu() { return *cameraMenu; }

    void setDetailLevel(int level);

    /// Called when all docks exist, once. Without stored values the default arrangement.
    void restoreArrangement(QSettings& settings);
    void saveArrangement(QSettings& settings) const;

Q_SIGNALS:
    void detailLevelChosen(int level);
    void pluginListRequested();
    void quitRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus(QDockWidget* cameras, QDockWidget* events);
    void arrangeByDefault();
    void applyShares();
    void resetLayout();
    void showAbout();

    QAction* showPicture = nullptr;
    QByteArray firstArrangement; ///< of docks as they were added
    QMenu* viewMenu = nullptr;
    QMenu* cameraMenu = nullptr;
    QActionGroup* detailLevels = nullptr;
    QHash<const QObject*, double> shares; ///< of the window's height, for docks as they were last arranged
    int arrangedHeight = -1;              ///< of the window, when its docks were last arranged
};

#endif
