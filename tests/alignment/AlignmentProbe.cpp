// SPDX-License-Identifier: MIT
// A small program that does one operation on alignment tables, so that a test sees what it prints and can
// bound its memory. Each command ends with a line "result ..." on standard output.
//
//   remove ID [STORED...]   a list with the stored ids; removes ID; result: what is left, separated by commas
//   load FILE               loads FILE over a list of one table, taking over its type, as soon as a line
//   arrives on
//                           standard input; result: code and number of tables
#include "tests/alignment/AlignmentTestTools.h"

#include <QString>

#include <cstdio>
#include <string>

namespace {

int Remove(const QByteArray &hwId, const QList<QByteArray> &storedIds)
{
    AlignStore store;
    for (const QByteArray &stored : storedIds) {
        if (tests::AppendTableWithId(store, store.Tables, stored) == nullptr)
            return 1;
    }
    AlignStore::ClearTableByHwId(&store.Tables, hwId.constData());
    (void)std::printf("result %s\n", tests::HwIdsOf(store.Tables).join(',').constData());
    return 0;
}

int Load(const QString &path)
{
    AlignStore store;
    if (store.AppendNewTable(store.Tables) == nullptr)
        return 1;
    (void)std::puts("ready");
    (void)std::fflush(stdout);
    if (std::getchar() == EOF)
        return 1;
    const AlignResult result = store.LoadFile(path, store.Tables, true);
    (void)std::printf("result %d %d\n", static_cast<int>(result), static_cast<int>(store.Tables.Count));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QList<QByteArray> arguments(argv + 1, argv + argc);
    if (arguments.size() >= 2 && arguments.at(0) == "remove")
        return Remove(arguments.at(1), arguments.mid(2));
    if (arguments.size() == 2 && arguments.at(0) == "load")
        return Load(QString::fromLocal8Bit(arguments.at(1)));
    (void)std::fputs("usage: AlignmentProbe remove ID [STORED...] | load FILE\n", stderr);
    return 2;
}
