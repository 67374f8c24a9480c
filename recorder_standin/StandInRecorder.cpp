// SPDX-License-Identifier: MIT
#include "recorder_standin/StandInRecorder.h"

#include "Common_Files/RecorderNames.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>

#include <array>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 HugeFileBytes = 64 * 1024 * 1024;
constexpr int CutShort = 2; // exit code of a recorder whose file is not whole

/// What a night at a station may look like.
constexpr std::array Messages = {
    "<INFO>Recorder started",
    "<CONNECTING><INFO>Connecting to receiver LimeUsb",
    "<WORK>Recording 162.400 MHz, 250 kS/s",
    "<WORK>Recording 162.400 MHz, 250 kS/s\nFile 1 of 4 closed\nFile 2 of 4 opened",
    "<WARNING>Buffer at 80 %, disk is slow",
    "<GET>Time <SEND>Position <WORK>Recording 433.920 MHz",
    "<ERROR>Receiver lost, trying again",
};

/// Writes in place: the file must stay the one that is being watched.
void WriteInPlace(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
}

} // namespace

StandInRecorder::StandInRecorder(const StandInOptions &options, const StandInReport &report)
    : Options(options), Report(report), StatusFile(RecorderStatusFile())
{
    connect(&StatusTimer, &QTimer::timeout, this, &StandInRecorder::Slot_WriteStatus);
    connect(&Signalling, &QSystemSignalling::Signal_Trigger, this, &StandInRecorder::Slot_Quit);
}

void StandInRecorder::Start()
{
    if (!Options.IgnoreQuit) {
        const int index = Signalling.Add(RecorderQuitKey);
        if (index < 0 || !Signalling.Wait(index))
            (void)std::fprintf(stderr, "TarnvikRecord (stand-in): cannot listen: %s\n",
                               qUtf8Printable(Signalling.errorText()));
    }
    if (Options.ExitAfterMs >= 0)
        QTimer::singleShot(Options.ExitAfterMs, this, [this] { End(Options.ExitCode); });
    if (Options.CrashAfterMs >= 0)
        QTimer::singleShot(Options.CrashAfterMs, this, [] { std::abort(); });
    if (Options.HangAfterMs >= 0) {
        QTimer::singleShot(Options.HangAfterMs, this, [this] {
            QThread::msleep(static_cast<unsigned long>(Options.HangMs));
            std::_Exit(CutShort);
        });
    }
    Report.Write("ready");
    Flood();
    if (Options.IntervalMs > 0) {
        StatusTimer.start(Options.IntervalMs);
        Slot_WriteStatus();
    }
}

void StandInRecorder::Slot_Quit()
{
    Report.Write("quit-request");
    std::printf("stand-in: asked to quit\n");
    IsObeyingQuit = true;
    CloseFileAndEnd(Options.QuitCloseMs);
}

void StandInRecorder::Terminate()
{
    Report.Write("terminate-request");
    if (Options.IgnoreTerminate)
        return;
    if (IsObeyingQuit)
        std::_Exit(CutShort);
    QMetaObject::invokeMethod(
        this, [this] { CloseFileAndEnd(Options.TerminateCloseMs); }, Qt::QueuedConnection);
}

void StandInRecorder::CloseFileAndEnd(int closeMs) const
{
    QThread::msleep(static_cast<unsigned long>(closeMs)); // who closes a file hears of nothing meanwhile
    Report.Write("closed");
    End(0);
}

void StandInRecorder::End(int exitCode) const
{
    Report.Write("ends");
    QCoreApplication::exit(exitCode);
}

void StandInRecorder::Flood() const
{
    for (int line = 0; line < Options.FloodLines; ++line)
        std::printf("stand-in: line %d of %d, as fast as it is taken; grüße, 你好\n", line + 1,
                    Options.FloodLines);
    (void)std::fflush(stdout);
}

QString StandInRecorder::nextMessage() const
{
    return Options.Message.isEmpty() ? QString::fromUtf8(Messages[SequenceNr % Messages.size()])
                                     : Options.Message;
}

QByteArray StandInRecorder::statusContent(const QString &message) const
{
    // Made by Qt's own INI writer, with its quoting, but beside the status file: the writer replaces the file
    // that it writes by a new one.
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"status.ini"_s);
    {
        QSettings status(path, QSettings::IniFormat);
        status.setValue(u"SequenceNr"_s, SequenceNr);
        status.setValue(u"LastAction"_s, 1);
        status.setValue(u"LastActionResult"_s, 0);
        status.setValue(u"Message"_s, message);
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void StandInRecorder::Slot_WriteStatus()
{
    const QString message = nextMessage();
    ++SequenceNr;
    switch (Options.StatusKind) {
    case StandInOptions::Status::Valid:
        WriteInPlace(StatusFile, statusContent(message));
        break;
    case StandInOptions::Status::None:
        break;
    case StandInOptions::Status::Damaged:
        WriteInPlace(StatusFile, QByteArray("SequenceNr=\x00\xff[[[\nMessage", 24).repeated(3));
        break;
    case StandInOptions::Status::Huge:
        WriteInPlace(StatusFile, QByteArray("Message=").append(HugeFileBytes, 'x'));
        break;
    }
    if (Options.Faults >= 0)
        Report.Write("status");
    std::printf("stand-in: status %u written\n", SequenceNr);
    (void)std::fflush(stdout);
    if (SequenceNr % 5 == 0)
        (void)std::fprintf(stderr, "stand-in: a line on the error channel, %u\n", SequenceNr);
}
