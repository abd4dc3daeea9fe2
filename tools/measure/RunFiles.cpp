// SPDX-License-Identifier: GPL-3.0-or-later
// Files are told apart by what the system knows of them, not by their names.
#include "RunFiles.h"

#include <sys/stat.h>

#include <map>
#include <utility>
#include <vector>

#include <QtCore/QFile>

#include "Report.h"
#include "ReportDescription.h"

QString faultOfFiles(const Options& options, const QStringList& reports)
{
    struct NamedFile
    {
        const char* option;
        QString name;
    };
    std::vector<NamedFile> written{{"report", options.reportFile}};
    for (const QString& report : reports) {
        written.push_back({"csv", report});
        written.push_back({"csv", descriptionFile(report)});
    }
    QString error;
    for (const NamedFile& file : written) {
        if (!file.name.isEmpty() && !canWriteReport(file.name, &error))
            return error;
    }

    std::vector<NamedFile> all{
        {"cameras", options.scenarioFile}, {"limits", options.limitsFile}, {"log", options.logFile}};
    all.insert(all.end(), written.begin(), written.end());
    std::map<std::pair<dev_t, ino_t>, const NamedFile*> known;
    for (const NamedFile& file : all) {
        struct stat status = {}; // not there: a new file, or for somebody else to complain about
        if (::stat(QFile::encodeName(file.name).constData(), &status) != 0 || !S_ISREG(status.st_mode))
            continue;
        const auto [other, isNew] = known.try_emplace({status.st_dev, status.st_ino}, &file);
        if (!isNew)
            return QStringLiteral("--%1: %2 is the file of --%3, too")
                .arg(QLatin1String(file.option), file.name, QLatin1String(other->second->option));
    }
    return {};
}
