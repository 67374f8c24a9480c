// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/Station.h"
#include "tests/support/Patience.h"

#include "tools/RecorderReport.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

QString ProgramName()
{
    return QFileInfo(QStringLiteral(CONTROL_PROGRAM)).fileName();
}

} // namespace

QString RecorderName()
{
    return QFileInfo(tools::StandInProgram()).fileName();
}

Station::Station(const QString &recorderName, const QString &folderName) : Place(Folder.path())
{
    if (!folderName.isEmpty()) {
        Place.mkdir(folderName);
        Place.cd(folderName);
    }
    QFile::copy(QStringLiteral(CONTROL_PROGRAM), path(ProgramName()));
    if (!recorderName.isEmpty())
        QFile::copy(tools::StandInProgram(), path(recorderName));
}

void Station::Start(const QStringList &arguments)
{
    Process.start(path(ProgramName()), arguments);
    KeepTogether();
}

QString Station::output()
{
    Output += Process.readAllStandardOutput();
    return QString::fromUtf8(Output).remove(u'\r');
}

QString Station::errorOutput()
{
    ErrorOutput += Process.readAllStandardError();
    // Qt 6.8 remarks on a locale that is not installed, and those of the tests are not everywhere; and on a
    // Wayland keyboard that has no keys yet.
    static const QRegularExpression remark(
        u"^TarnvikControl [\\d:]+: (Detected locale .*?for more information\\.|unknown keymap format: 0)\\n"_s,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    return QString::fromUtf8(ErrorOutput).remove(u'\r').remove(remark);
}

bool Station::endedWith(int exitCode)
{
    return Process.waitForFinished(tests::Patience) && Process.exitStatus() == QProcess::NormalExit &&
           Process.exitCode() == exitCode;
}

bool PutTranslationsBeside(const Station &station)
{
    const QDir built(QStringLiteral(BUILT_LANGUAGES));
    const QStringList files = built.entryList(QDir::Files);
    bool copied = !files.isEmpty() && QDir().mkpath(station.path(u"languages"_s));
    for (const QString &file : files)
        copied = QFile::copy(built.filePath(file), station.path(u"languages/"_s + file)) && copied;
    return copied;
}

QProcessEnvironment SystemIn(const QString &locale, const QString &languages)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"LC_ALL"_s);
    environment.insert(u"LANG"_s, locale);
    environment.insert(u"LC_CTYPE"_s, u"C.UTF-8"_s); // exists everywhere
    environment.insert(u"LANGUAGE"_s, languages);
    return environment;
}

} // namespace tests
