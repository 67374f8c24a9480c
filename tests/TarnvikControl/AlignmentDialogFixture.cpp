// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/AlignmentDialogFixture.h"

#include "Common_Files/TarnvikBasic.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tests {

AlignmentDialogFixture::AlignmentDialogFixture()
{
    (void)Dialog.LoadDriverFiles();
    Dialog.show();
    (void)QTest::qWaitForWindowActive(&Dialog);
}

QPushButton &AlignmentDialogFixture::button(const QString &text) const
{
    const QList<QPushButton *> buttons = Dialog.findChildren<QPushButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [&](const QPushButton *other) { return other->text() == text; });
    if (found == buttons.end())
        qFatal("there is no button %s", qPrintable(text));
    return **found;
}

QTreeWidgetItem *AlignmentDialogFixture::item(const QString &driver, const QString &hardwareId) const
{
    const QList<QTreeWidgetItem *> items =
        tree().findItems(hardwareId, Qt::MatchExactly | Qt::MatchRecursive);
    const auto found = std::find_if(items.begin(), items.end(), [&](const QTreeWidgetItem *other) {
        return other->parent() && other->parent()->text(0) == driver;
    });
    return found != items.end() ? *found : nullptr;
}

QStringList AlignmentDialogFixture::lines() const
{
    QStringList lines;
    const QTreeWidgetItem *line = tree().topLevelItem(0);
    for (; line; line = tree().itemBelow(line)) {
        QString text = line->text(0);
        if (line->data(0, Qt::CheckStateRole).isValid())
            text.prepend(line->checkState(0) == Qt::Checked ? u"[x] "_s : u"[ ] "_s);
        lines.append(line->parent() ? text + u" | "_s + line->text(1) : text + line->text(1));
    }
    return lines;
}

QString AlignmentDialogFixture::recorderFolder()
{
    return QTarnvikBasic::GetRecorderFile(QString());
}

bool AlignmentDialogFixture::PrepareFolders()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    const QString import = QDir::tempPath() + u"/import"_s;
    return QDir(recorderFolder()).removeRecursively() && QDir().mkpath(recorderFolder()) &&
           QDir(import).removeRecursively() && QDir().mkpath(import);
}

QString RecorderFile(const QString &name)
{
    return AlignmentDialogFixture::recorderFolder() + u'/' + name;
}

QString ImportFile(const QString &name)
{
    return QDir::tempPath() + u"/import/"_s + name;
}

bool WriteStationWithImports()
{
    const QList<FileTable> rtl = {{"0x1", Day("2024-01-01")}, {"0x2", Day("2024-02-02")}};
    const QList<FileTable> airspy = {{"0x1", Day("2023-01-01")}};
    const QList<FileTable> rtlImport = {{"0x1", Day("2024-06-01")}, {"0x2", Day("2022-02-02")}};
    const QList<FileTable> airspyImport = {{"0x9", 0}};
    return WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, rtl) &&
           WriteAlignmentFile(RecorderFile(AirspyFile), SdrType::AirSpy, airspy) &&
           WriteAlignmentFile(ImportFile(u"r.ad"_s), SdrType::RtlSdr, rtlImport) &&
           WriteAlignmentFile(ImportFile(u"a.ad"_s), SdrType::AirSpy, airspyImport);
}

bool WriteStationWithVersions()
{
    const QList<FileTable> rtl = {
        {"0x3", Day("2024-03-03")}, {"0x1", Day("2024-01-01")}, {"0x2", Day("2024-02-02")}};
    const QList<FileTable> airspy = {{"0x1", Day("2023-01-01")}};
    const QList<FileTable> import = {{"0x1", Day("2024-06-01")},
                                     {"0x2", Day("2022-02-02")},
                                     {"0x3", Day("2024-03-03")},
                                     {"0x4", Day("2024-04-04")}};
    return WriteAlignmentFile(RecorderFile(RtlFile), SdrType::RtlSdr, rtl) &&
           WriteAlignmentFile(RecorderFile(AirspyFile), SdrType::AirSpy, airspy) &&
           WriteAlignmentFile(VersionsFile().first(), SdrType::RtlSdr, import);
}

QStringList VersionsFile()
{
    return {ImportFile(u"i.ad"_s)};
}

const QStringList StationLines = {
    u"AirSpy"_s,
    u"0x1 | Aligned at: 2023-01-01"_s,
    u"RTL-SDR"_s,
    u"0x1 | Aligned at: 2024-01-01"_s,
    u"0x2 | Aligned at: 2024-02-02"_s,
    u"0x3 | Aligned at: 2024-03-03"_s,
};

} // namespace tests
