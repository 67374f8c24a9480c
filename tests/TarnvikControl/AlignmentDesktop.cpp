// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/AlignmentDesktop.h"

#include "Common_Files/TarnvikBasic.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/support/VirtualDesktop.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

QString DriverPath(const QString &name)
{
    return QTarnvikBasic::GetRecorderFile(name);
}

QString DesktopPath(const QString &name)
{
    const QDir desktop(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    return desktop.mkpath(u"."_s) ? desktop.filePath(name) : QString();
}

QString DialogWindow()
{
    return VirtualDesktop::dialogs(Title).value(0);
}

bool PressIn(const QString &title, const QStringList &keys)
{
    const auto window = [&title] { return title.isEmpty() ? DialogWindow() : OnlyWindow(title); };
    return QTest::qWaitFor([&] { return !window().isEmpty(); }) && VirtualDesktop::Press(window(), keys);
}

bool OpenDialog()
{
    return PressIn(Title, {u"ctrl+s"_s}) && QTest::qWaitFor([] { return !DialogWindow().isEmpty(); });
}

bool Import(const QString &name)
{
    // Tree, Reset, Clear, Import...
    const QStringList back(3, u"shift+Tab"_s);
    return PressIn({}, {u"Tab"_s, u"Tab"_s, u"Tab"_s, u"space"_s}) && PressIn(ImportTitle, {u"ctrl+a"_s}) &&
           VirtualDesktop::Type(name) && VirtualDesktop::Press({u"Return"_s}) &&
           QTest::qWaitFor([] { return VirtualDesktop::windows(ImportTitle).isEmpty(); }) &&
           PressIn({}, back);
}

bool BeginToSave()
{
    return PressIn({}, {u"Return"_s}) && QTest::qWaitFor([] { return !OnlyWindow(ExportTitle).isEmpty(); });
}

bool AcceptProposedFile(bool replaces)
{
    if (!PressIn(ExportTitle, {u"Return"_s}))
        return false;
    if (replaces) { // the question has the same title
        if (!QTest::qWaitFor([] { return VirtualDesktop::windows(ExportTitle).size() == 2; }) ||
            !VirtualDesktop::Press(VirtualDesktop::windows(ExportTitle).last(), {u"alt+y"_s}))
            return false;
    }
    return QTest::qWaitFor([] { return VirtualDesktop::windows(ExportTitle).isEmpty(); });
}

} // namespace tests
