// SPDX-License-Identifier: GPL-3.0-or-later
// Window, menus and arrangement.
#include "MainWindow.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QSettings>
#include <QtGui/QCloseEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>

#include "CameraDock.h"
#include "EventDock.h"
#include "GuiIcons.h"
#include "ImageView.h"
#include "ShortcutsDialog.h"
#include "ViewerDelegate.h"

namespace {

constexpr QSize defaultSize(1520, 1000);
constexpr double defaultBottomShare = 0.63; // a plug-in with four cameras is readable
constexpr int defaultCamerasWidth = 440;
constexpr int defaultEventsWidth = 430;

const QLatin1String pictureKey("picture");

QString shareKey(const QDockWidget* dock)
{
    return QStringLiteral("share/") + dock->objectName();
}

/// Qt crashes on an arrangement in which a bit has changed, so it gets none whose sum does not fit.
QByteArray sumOf(const QByteArray& arrangement)
{
    return QCryptographicHash::hash(arrangement, QCryptographicHash::Md5);
}

QByteArray sealed(const QByteArray& arrangement)
{
    return sumOf(arrangement) + arrangement;
}

/// Empty if it is not what sealed() returned.
QByteArray unsealed(const QByteArray& stored)
{
    const QByteArray arrangement = stored.mid(sumOf({}).size());
    return stored.startsWith(sumOf(arrangement)) ? arrangement : QByteArray();
}

} // namespace

MainWindow::MainWindow(const TakeOvers& takeOvers, EventLog& log)
{
    setWindowTitle(tr("Kestrova"));
    setWindowIcon(drawnIcon(GuiIcon::Application, palette()));
    setObjectName(QStringLiteral("MainWindow"));

    auto* view = new ImageView;
    setCentralWidget(view);

    auto* cameras = new CameraDock(takeOvers, log, this);
    addDockWidget(Qt::LeftDockWidgetArea, cameras);
    connect(cameras, &CameraDock::selectedCameraChanged, view, &ImageView::setCamera);

    auto* events = new EventDock(log, this);
    addDockWidget(Qt::RightDockWidgetArea, events);

    buildMenus(cameras, events);
}

void MainWindow::buildMenus(QDockWidget* cameras, QDockWidget* events)
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* quit = file->addAction(tr("&Quit"), this, &MainWindow::quitRequested);
    quit->setShortcut(QKeySequence(tr("Ctrl+Q")));

    viewMenu = menuBar()->addMenu(tr("&View"));
    QMenu* levels = viewMenu->addMenu(tr("&Detail level"));
    QAction* reset = viewMenu->addAction(tr("&Reset layout"), this, &MainWindow::resetLayout);
    reset->setShortcut(QKeySequence(tr("Ctrl+Shift+R")));
    viewMenu->addSeparator();
    showPicture = viewMenu->addAction(tr("&Picture"));
    showPicture->setShortcut(QKeySequence(tr("Ctrl+Shift+P")));
    showPicture->setCheckable(true);
    showPicture->setChecked(true);
    connect(showPicture, &QAction::toggled, centralWidget(), &QWidget::setVisible);
    viewMenu->addAction(cameras->toggleViewAction());
    viewMenu->addAction(events->toggleViewAction());
    cameras->toggleViewAction()->setShortcut(Qt::Key_F2);
    events->toggleViewAction()->setShortcut(Qt::Key_F3);

    levels->setToolTip(tr("How much plug-ins show"));
    detailLevels = new QActionGroup(this);
    const QString names[] = {tr("&1  Beginner"), tr("&2  Basic"), tr("&3  Standard"), tr("&4  Expert"),
                             tr("&5  Developer")};
    int level = ViewerDelegate::lowestDetailLevel;
    for (const QString& name : names) {
        QAction* action = levels->addAction(name);
        action->setCheckable(true);
        action->setShortcut(Qt::CTRL + Qt::Key_0 + level);
        action->setData(level++);
        detailLevels->addAction(action);
    }
    connect(detailLevels, &QActionGroup::triggered, this,
            [this](const QAction* action) { Q_EMIT detailLevelChosen(action->data().toInt()); });

    cameraMenu = menuBar()->addMenu(tr("&Cameras"));

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    QAction* shortcuts = help->addAction(tr("&Shortcuts..."), this, [this] { ShortcutsDialog(this).exec(); });
    shortcuts->setShortcut(Qt::Key_F1);
    help->addAction(tr("&Plug-ins..."), this, &MainWindow::pluginListRequested, Qt::SHIFT + Qt::Key_F1);
    help->addAction(tr("&About Kestrova..."), this, &MainWindow::showAbout, Qt::CTRL + Qt::Key_F1);
    help->addAction(
        tr("About &Qt..."), this, [this] { QMessageBox::aboutQt(this); }, Qt::CTRL + Qt::SHIFT + Qt::Key_F1);
}

void MainWindow::setDetailLevel(int level)
{
    const auto actions = detailLevels->actions();
    for (QAction* action : actions)
        action->setChecked(action->data().toInt() == level);
}

void MainWindow::restoreArrangement(QSettings& settings)
{
    firstArrangement = saveState();
    arrangeByDefault();
    showPicture->setChecked(settings.value(pictureKey, true).toBool());
    restoreGeometry(unsealed(settings.value(QStringLiteral("geometry")).toByteArray()));
    restoreState(unsealed(settings.value(QStringLiteral("docks")).toByteArray()));
    // A maximised window is restored in its normal size first, into which heights of a maximised one do not fit.
    shares.clear();
    const auto docks = findChildren<QDockWidget*>();
    for (QDockWidget* dock : docks) {
        const double share = settings.value(shareKey(dock)).toDouble();
        if (share > 0.0 && share < 1.0)
            shares[dock] = share;
        dock->installEventFilter(this);
    }
}

void MainWindow::saveArrangement(QSettings& settings) const
{
    settings.setValue(QStringLiteral("geometry"), sealed(saveGeometry()));
    settings.setValue(QStringLiteral("docks"), sealed(saveState()));
    settings.setValue(pictureKey, showPicture->isChecked());
    const auto docks = findChildren<QDockWidget*>();
    for (const QDockWidget* dock : docks)
        settings.setValue(shareKey(dock), shares.value(dock));
}

void MainWindow::arrangeByDefault()
{
    // Without a display there is only a pretended screen, which need not limit the picture of the window.
    const bool realScreen = QGuiApplication::platformName() != QLatin1String("offscreen");
    resize(realScreen ? defaultSize.boundedTo(screen()->availableSize()) : defaultSize);
    const auto docks = findChildren<QDockWidget*>();
    for (const QDockWidget* dock : docks)
        shares[dock] = defaultBottomShare;
    applyShares();
    resizeDocks({findChild<QDockWidget*>(QStringLiteral("dockCameras")),
                 findChild<QDockWidget*>(QStringLiteral("dockEvents"))},
                {defaultCamerasWidth, defaultEventsWidth}, Qt::Horizontal);
}

void MainWindow::applyShares()
{
    QList<QDockWidget*> bottom;
    QList<int> heights;
    const auto docks = findChildren<QDockWidget*>();
    for (QDockWidget* dock : docks) {
        if (dockWidgetArea(dock) == Qt::BottomDockWidgetArea && !dock->isHidden() && !dock->isFloating() &&
            shares.contains(dock)) {
            bottom.append(dock);
            heights.append(qRound(shares.value(dock) * height()));
        }
    }
    resizeDocks(bottom, heights, Qt::Vertical);
    layout()->activate(); // at once: a later change of a height is taken for a choice of the user
    arrangedHeight = height();
}

void MainWindow::resetLayout()
{
    showNormal(); // a maximised window keeps its size
    showPicture->setChecked(true);
    restoreState(firstArrangement);
    arrangeByDefault();
}

/// Left alone, Qt takes from the bottom docks when the window shrinks and gives nothing back when it grows.
void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    applyShares();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // While the window has its height, others give a dock its own: a person, an arrangement, another dock.
    if (event->type() == QEvent::Resize && height() == arrangedHeight)
        shares[watched] = double(static_cast<QResizeEvent*>(event)->size().height()) / height();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->accept(); // refusing would hold up the end of the session
    Q_EMIT quitRequested();
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About Kestrova"),
                       tr("<h3>Kestrova %1</h3>"
                          "<p>Views machine-vision cameras and measures their data throughput.</p>"
                          "<p>Kestrova Imaging, <a href=\"https://kestrova.example\">kestrova.example</a></p>"
                          "<p>Free software under the GNU General Public License, version 3 or later.</p>")
                           .arg(QStringLiteral(KESTROVA_VERSION)));
}
