// SPDX-License-Identifier: MIT
#include "Common_Files/TarnvikBasic.h"

#include "Common_Files/FreshIniFile.h"
#include "Common_Files/RecorderNames.h"
#include "platform/QuitSignal.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

/// The first entry that matches the whole pattern regardless of case, or -1.
qsizetype IndexOfMatch(const QStringList &entries, const QString &pattern)
{
    return entries.indexOf(QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption));
}

} // namespace

QString QTarnvikBasic::GetConfigLocation()
{
    return GetConfigLocation(QStandardPaths::standardLocations(QStandardPaths::ConfigLocation),
                             QStandardPaths::writableLocation(QStandardPaths::ConfigLocation),
                             QCoreApplication::applicationName());
}

QString QTarnvikBasic::GetConfigLocation(const QStringList &locations, const QString &writableLocation,
                                         const QString &applicationName)
{
    // The patterns know "/" only, so they are held against the entries written with it. The result is the
    // entry as it stands.
    const QStringList entries = QStringList(locations).replaceInStrings(u"\\"_s, u"/"_s);
    qsizetype chosen = IndexOfMatch(entries, uR"(.*([\/])ProgramData([\/]).*)"_s);
    if (chosen < 0)
        chosen = IndexOfMatch(entries, uR"(.*([\/])\.config.*)"_s);

    QString location = locations.value(chosen); // empty for -1
    AddOrgAndAppFolder(location, applicationName);
    if (location.isEmpty() && !writableLocation.isEmpty()) {
        location = writableLocation;
        AddOrgAndAppFolder(location, applicationName);
    }
    return location;
}

void QTarnvikBasic::AddOrgAndAppFolder(QString &path, const QString &applicationName)
{
    // An empty name is contained in every path.
    const QString organization = QCoreApplication::organizationName();
    const bool hasApplication = path.contains(applicationName);
    if (path.contains(organization)) {
        if (!hasApplication)
            path += u"/%1"_s.arg(applicationName);
        return;
    }
    if (hasApplication) {
        path.remove(applicationName);
        if (path.endsWith(u'/'))
            path.chop(1);
    }
    path += u"/%1/%2"_s.arg(organization, applicationName);
}

QString QTarnvikBasic::GetRecorderFile(const QString &fileName)
{
    QString path = GetConfigLocation();
    if (path.isEmpty())
        return path;
    // Qt would find an empty name between all letters.
    if (const QString applicationName = QCoreApplication::applicationName(); !applicationName.isEmpty())
        path.replace(applicationName, u"TarnvikRecord"_s);
    if (!fileName.isEmpty())
        path += u'/' + fileName;
    return path;
}

QString QTarnvikBasic::GetRecordPath()
{
    return GetRecordPath(GetRecorderFile(u"tarnviklocation.ini"_s));
}

QString QTarnvikBasic::GetRecordPath(const QString &locationFile)
{
    return FreshIniFile(locationFile).value(u"Record/RecordPath"_s).toString();
}

void QTarnvikBasic::SendRecorderQuit(void * /*context*/, QString & /*program*/,
                                     QString & /*workingDirectory*/, QStringList & /*arguments*/)
{
    platform::SendQuitSignal(RecorderQuitKey);
}
