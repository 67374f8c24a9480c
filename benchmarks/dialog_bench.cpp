// SPDX-License-Identifier: MIT
// The alignment dialog over a driver's file with as many tables as a file can hold, without a display: from
// the command to the drawn tree, a refill, and a click on a header. Each run is a new dialog.
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "alignment/AlignStore.h"
#include "alignment_merge/AlignmentDriver.h"
#include "benchmarks/TimeTable.h"
#include "tools/AlignmentGenerator.h"
#include "tools/IsolatedFolders.h"
#include "tools/ProcessMemory.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>

#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int Runs = 10;
constexpr int WarmUpRuns = 1; // the first run reads the file from the disk
constexpr int Tables = AlignTableList::MaxCount;
constexpr auto Driver = SdrType::RtlSdr;

bool WriteDriverFile()
{
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    tools::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = Driver;
    return QDir().mkpath(folder) && generator.AppendEmptyTables(store, Tables) &&
           store.SaveFile(folder + u'/' + AlignmentDriverFileName(static_cast<int>(Driver))) ==
               AlignResult::Ok;
}

struct Times
{
    std::vector<double> Open;
    std::vector<double> Refill;
    std::vector<double> Sort;
};

/// Draws what is shown now; returns the milliseconds since the timer's start and starts it anew.
double Drawn(QTreeWidget &tree, QElapsedTimer &timer)
{
    QCoreApplication::processEvents();
    tree.viewport()->repaint();
    const double milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    timer.start();
    return milliseconds;
}

bool MeasureOnce(Times &times)
{
    QElapsedTimer timer;
    timer.start();
    QDlgAlignmentCfg dialog;
    if (!dialog.LoadDriverFiles().isEmpty())
        return false;
    dialog.show();
    if (!QTest::qWaitForWindowExposed(&dialog))
        return false;
    auto &tree = *dialog.findChild<QTreeWidget *>();
    times.Open.push_back(Drawn(tree, timer));
    dialog.Slot_Button_Reset();
    times.Refill.push_back(Drawn(tree, timer));
    QHeaderView &header = *tree.header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      {header.sectionViewportPosition(1) + 20, header.height() / 2});
    times.Sort.push_back(Drawn(tree, timer));
    return tree.topLevelItemCount() == 1 && tree.topLevelItem(0)->childCount() == Tables &&
           header.sortIndicatorSection() == 1;
}

} // namespace

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    if (!WriteDriverFile()) {
        (void)std::fprintf(stderr, "dialog_bench: the driver's file cannot be made.\n");
        return 1;
    }
    const double before = tools::ResidentMegabytes();
    tools::ResetPeak();
    Times times;
    for (int run = -WarmUpRuns; run < Runs; ++run) {
        if (run == 0)
            times = Times();
        if (!MeasureOnce(times)) {
            (void)std::fprintf(stderr, "dialog_bench: the dialog does not show the tables.\n");
            return 1;
        }
    }
    std::printf("%d tables; %d runs after a warm-up; milliseconds; spread is the interquartile range\n\n",
                Tables, Runs);
    PrintTimesHeader();
    PrintTimes("command to drawn tree", times.Open);
    PrintTimes("reset to drawn tree", times.Refill);
    PrintTimes("click on a header to drawn tree", times.Sort);
    std::printf("\nmemory: %.0f MB before, %.0f MB at most\n", before, tools::PeakMegabytes());
    return 0;
}
