// SPDX-License-Identifier: GPL-3.0-or-later
// The real viewer with the built plug-in, its settings in a directory of their own.
#ifndef KESTROVA_TESTS_VIEWERSESSION_H
#define KESTROVA_TESTS_VIEWERSESSION_H

#include <memory>
#include <vector>

#include <QtCore/QSettings>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>

#include "CameraRegistry.h"
#include "MainWindow.h"
#include "sim/SimulatedCamera.h"
#include "Viewer.h"

class ViewerSession
{
public:
    ViewerSession() { options.settingsFile = directory.filePath("settings.ini"); }

    /// What is measured and how: before begin().
    void set(const char* key, const QVariant& value) const
    {
        QSettings(options.settingsFile, QSettings::IniFormat)
            .setValue(QStringLiteral("DataThroughputGraphPlugin/") + key, value);
    }

    /// Whether the window is there, with the form in it.
    bool begin()
    {
        viewer = std::make_unique<Viewer>(options);
        const QString fault = viewer->start();
        form = viewer->window().findChild<QWidget*>("CxDataGraphForm");
        if (!fault.isEmpty() || !form || !QTest::qWaitForWindowExposed(&viewer->window()))
            return false;
        startAll = form->findChild<QAbstractButton*>("btnStartAll");
        CameraRegistry& registry = CameraRegistry::instance();
        for (int i = 0; i < registry.deviceCount(); ++i) {
            if (auto model = std::dynamic_pointer_cast<sim::SimulatedCamera>(registry.device(i)))
                models.push_back(std::move(model));
        }
        before = parameters();
        return true;
    }

    /// Of every camera.
    std::vector<QMap<QString, int>> parameters() const
    {
        std::vector<QMap<QString, int>> all;
        for (const auto& model : models)
            all.push_back(model->parameters());
        return all;
    }

    const QTemporaryDir directory;
    ViewerOptions options;
    std::vector<std::shared_ptr<sim::SimulatedCamera>> models; ///< outlive the viewer's end
    std::vector<QMap<QString, int>> before;                    ///< parameters at the beginning
    std::unique_ptr<Viewer> viewer;
    QWidget* form = nullptr;
    QAbstractButton* startAll = nullptr;
};

#endif
