// SPDX-License-Identifier: MIT
// TarnvikAlign over large alignment files: time and memory of "list", and "verify" beside cksum, which reads
// the same files and makes a checksum of them, in turn and in the same run. Fails when a stated bound is not
// kept.
#include "alignment/AlignStore.h"
#include "benchmarks/TimeTable.h"
#include "tools/AlignmentGenerator.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Full = tools::AlignmentGenerator::Full;

constexpr int Runs = 15;
constexpr double MostListMs = 1000;
constexpr double MostListMegabytes = 60;
constexpr double MostVerifyRatio = 3;

struct Run
{
    double Ms = 0;
    double Megabytes = 0; // the most resident memory
};

/// Runs a program with its output going nowhere. Ends the benchmark when it does not end with 0.
Run RunProgram(const QStringList &command)
{
    std::vector<QByteArray> bytes;
    for (const QString &argument : command)
        bytes.push_back(QFile::encodeName(argument));
    std::vector<char *> arguments;
    for (QByteArray &argument : bytes)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    struct rusage usage = {};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s failed\n", qPrintable(command.join(u' ')));
        std::exit(1);
    }
    return {time.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

double MedianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Makes an alignment file of so many tables of random data, or of tables without data sets.
bool MakeFile(const QString &path, SdrType sdrType, int tables, std::optional<Full> layout)
{
    const auto store = std::make_unique<AlignStore>();
    store->SdrType = sdrType;
    tools::AlignmentGenerator generator(1);
    return (layout ? generator.AppendFullTables(*store, tables, *layout)
                   : generator.AppendEmptyTables(*store, tables)) &&
           store->SaveFile(path) == AlignResult::Ok;
}

/// Makes ten files of ten tables each; empty when that fails.
QStringList MakeFiles(const QString &begin, Full layout)
{
    QStringList files;
    for (int i = 0; i < 10; ++i) {
        files.append(begin + QString::number(i));
        if (!MakeFile(files.last(), SdrType::LimeUsb, 10, layout))
            return {};
    }
    return files;
}

/// "verify" and cksum in turn. Returns how many times as long the first takes, by the medians.
double CompareVerify(const char *name, const QStringList &files)
{
    std::vector<double> verify;
    std::vector<double> checksum;
    for (int run = 0; run < Runs; ++run) {
        verify.push_back(RunProgram(QStringList{QStringLiteral(ALIGNMENT_TOOL), u"verify"_s} + files).Ms);
        checksum.push_back(RunProgram(QStringList{u"cksum"_s} + files).Ms);
    }
    qint64 size = 0;
    for (const QString &file : files)
        size += QFileInfo(file).size();
    std::printf("\n%s, %.1f MB\n", name, static_cast<double>(size) / 1e6);
    PrintTimesHeader();
    PrintTimes("verify", verify);
    PrintTimes("cksum", checksum);
    const double ratio = MedianOf(verify) / MedianOf(checksum);
    std::printf("ratio of the medians: %.2f\n", ratio);
    return ratio;
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString most = folder.filePath(u"most.ad"_s);
    const QStringList deep = MakeFiles(folder.filePath(u"deep"_s), Full::Deep);
    const QStringList wide = MakeFiles(folder.filePath(u"wide"_s), Full::Wide);
    if (!MakeFile(most, SdrType::RtlSdr, 65535, std::nullopt) || deep.isEmpty() || wide.isEmpty()) {
        std::fprintf(stderr, "the files cannot be made\n");
        return 1;
    }

    std::vector<double> list;
    double megabytes = 0;
    for (int run = 0; run < Runs; ++run) {
        const Run one = RunProgram({QStringLiteral(ALIGNMENT_TOOL), u"list"_s, most});
        list.push_back(one.Ms);
        megabytes = std::max(megabytes, one.Megabytes);
    }
    std::printf("list, 65535 tables\n");
    PrintTimesHeader();
    PrintTimes("list", list);
    std::printf("at most %.1f MB; bounds: %.0f ms, %.0f MB\n", megabytes, MostListMs, MostListMegabytes);

    bool kept = MedianOf(list) < MostListMs && megabytes < MostListMegabytes;
    kept =
        CompareVerify("100 tables, few frequency points with all their entries", deep) <= MostVerifyRatio &&
        kept;
    kept = CompareVerify("100 tables, all frequency points", wide) <= MostVerifyRatio && kept;
    std::printf("at most %.0f\n", MostVerifyRatio);
    (void)CompareVerify("65535 tables without data sets", {most});
    if (!kept)
        std::fprintf(stderr, "a bound was not kept\n");
    return kept ? 0 : 1;
}
