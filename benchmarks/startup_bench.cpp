// SPDX-License-Identifier: MIT
// How soon the recorder runs: after the start of the control program, and after a recorder's death. Both with
// the real program and the stand-in recorder, in folders of their own and without a display.
//
// The times are the stand-in's own: its report holds the steady clock, which is the same for all processes of
// the machine. How often this program looks at the report does not matter.
#include "benchmarks/TimeTable.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <chrono>
#include <cstdio>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int Runs = 20;
constexpr int WarmUpRuns = 1; // the first run reads the files from the disk
constexpr int PatienceMs = 20'000;
constexpr int PollMs = 5;
constexpr int SettleMs = 500; // from the recorder's start to its death: the program has come to rest
constexpr int Retries = 60;   // when another instance runs
constexpr int RetryMs = 2'000;

qint64 SteadyMicroseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

void Complain(const QString &text)
{
    (void)std::fprintf(stderr, "startup_bench: %s\n", qPrintable(text));
}

/// The control program with the recorder beside it. What still runs of them is killed with this object.
class Station
{
public:
    Station(const QString &program, const tools::RecorderReport &report) : Program(program), Report(report)
    {
        Control.setProcessChannelMode(QProcess::MergedChannels);
    }
    ~Station()
    {
        if (Control.state() != QProcess::NotRunning) {
            Control.kill();
            Control.waitForFinished();
        }
        if (tools::IsAlive(Recorder))
            tools::KillProcess(Recorder);
    }
    Q_DISABLE_COPY_MOVE(Station)

    enum class Outcome { Started, OtherInstance, Failed };

    /// Starts the program and waits for the recorder's start. `milliseconds` is the time between the two.
    Outcome Start(double &milliseconds)
    {
        const qsizetype before = starts().size();
        const qint64 from = SteadyMicroseconds();
        Control.start(Program, QStringList(), QIODevice::ReadOnly);
        const std::optional<qint64> to = WaitForStart(before);
        if (to) {
            milliseconds = static_cast<double>(*to - from) / 1000;
            return Outcome::Started;
        }
        return refused() ? Outcome::OtherInstance : Outcome::Failed;
    }

    /// Kills the recorder and waits for its successor's start. The time between the two, in milliseconds.
    std::optional<double> Restart()
    {
        const qsizetype before = starts().size();
        const qint64 from = SteadyMicroseconds();
        if (!tools::KillProcess(Recorder))
            return std::nullopt;
        const std::optional<qint64> to = WaitForStart(before);
        return to ? std::optional(static_cast<double>(*to - from) / 1000) : std::nullopt;
    }

    void Settle() { Take(SettleMs); }

    /// Ends the program in order, and the recorder with it; false when it does not obey.
    bool End()
    {
        Control.terminate();
        if (!Control.waitForFinished(PatienceMs) || Control.exitStatus() != QProcess::NormalExit ||
            Control.exitCode() != 0 || tools::IsAlive(Recorder))
            return false;
        Recorder = 0; // the system may give its id to another process now
        return true;
    }

    [[nodiscard]] QString output() const { return QString::fromLocal8Bit(Output); }

private:
    [[nodiscard]] QList<tools::RecorderEvent> starts() const
    {
        QList<tools::RecorderEvent> starts = Report.events();
        starts.removeIf(
            [](const tools::RecorderEvent &event) { return event.Event != QLatin1String("started"); });
        return starts;
    }

    [[nodiscard]] bool refused() const { return Output.contains("an instance is already running"); }

    /// Lets time pass and reads what the program prints.
    void Take(int milliseconds)
    {
        const QDeadlineTimer deadline(milliseconds);
        while (!deadline.hasExpired() && Control.state() != QProcess::NotRunning)
            Control.waitForFinished(static_cast<int>(deadline.remainingTime()));
        Output += Control.readAll();
    }

    /// The time of the first start behind those that are known; nothing when there is none in time.
    std::optional<qint64> WaitForStart(qsizetype known)
    {
        const QDeadlineTimer deadline(PatienceMs);
        while (!deadline.hasExpired() && Control.state() != QProcess::NotRunning && !refused()) {
            const QList<tools::RecorderEvent> events = starts();
            if (events.size() > known) {
                Recorder = events[known].ProcessId;
                return events[known].Microseconds;
            }
            Take(PollMs);
        }
        return std::nullopt;
    }

    const QString &Program;
    const tools::RecorderReport &Report;
    QProcess Control;
    QByteArray Output;
    qint64 Recorder = 0; // the process id of the one that runs, 0 when none does
};

struct Times
{
    std::vector<double> Start;
    std::vector<double> Restart;
};

/// One run; false when it could not be measured, which has been told then.
bool MeasureOnce(const QString &program, const tools::RecorderReport &report, Times &times)
{
    for (int attempt = 0; attempt < Retries; ++attempt) {
        Station station(program, report);
        double start = 0;
        const Station::Outcome outcome = station.Start(start);
        if (outcome == Station::Outcome::OtherInstance) {
            Complain(u"another TarnvikControl runs on this machine; only one can. Trying again."_s);
            QThread::msleep(RetryMs);
            continue;
        }
        if (outcome == Station::Outcome::Failed) {
            Complain(u"no recorder was started. The program printed:\n"_s + station.output());
            return false;
        }
        station.Settle();
        const std::optional<double> restart = station.Restart();
        if (!restart) {
            Complain(u"the recorder was not restarted. The program printed:\n"_s + station.output());
            return false;
        }
        station.Settle();
        if (!station.End()) {
            Complain(u"the program did not end in order. It printed:\n"_s + station.output());
            return false;
        }
        times.Start.push_back(start);
        times.Restart.push_back(*restart);
        return true;
    }
    Complain(u"gave up: end the other TarnvikControl first."_s);
    return false;
}

/// Copies a program into the folder; its path there, empty when that fails.
QString CopyProgram(const QString &program, const QString &folder)
{
    const QString copy = folder + u'/' + QFileInfo(program).fileName();
    return QFile::copy(program, copy) ? copy : QString();
}

} // namespace

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    // The program's texts stay English, so that its refusal is recognised.
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", "");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QCoreApplication application(argc, argv);

    const QString folder = isolation.root() + u"/program"_s;
    if (!QDir().mkpath(folder)) {
        Complain(u"no temporary folder can be made."_s);
        return 1;
    }
    const QString program = CopyProgram(QStringLiteral(CONTROL_PROGRAM), folder);
    if (program.isEmpty() || CopyProgram(tools::StandInProgram(), folder).isEmpty()) {
        Complain(u"the programs cannot be copied."_s);
        return 1;
    }

    tools::RecorderReport report;
    report.SetOption("INTERVAL_MS", "0"); // a silent recorder: nothing but starts is measured
    Times times;
    for (int run = -WarmUpRuns; run < Runs; ++run) {
        if (run == 0)
            times = Times();
        if (!MeasureOnce(program, report, times))
            return 1;
    }
    std::printf("%d runs after a warm-up; milliseconds; spread is the interquartile range\n\n", Runs);
    PrintTimesHeader();
    PrintTimes("program's start to recorder's start", times.Start);
    PrintTimes("recorder's death to its successor's start", times.Restart);
    return 0;
}
