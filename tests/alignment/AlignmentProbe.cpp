// SPDX-License-Identifier: MIT
// A small program that does one operation on alignment tables, so that a test sees what it prints and can
// bound its memory. Each command ends with a line "result ..." on standard output.
//
//   remove ID [STORED...]   a list with the stored ids; removes ID; result: what is left, separated by commas
//   remove-own ID           a list with one table of the id; removes it by the id in the table itself;
//                           result: what is left
//   load FILE               loads FILE over a list of one table, taking over its type, as soon as a line
//                           arrives on standard input; result: code and number of tables
//   read FILE               opens FILE and, as soon as a line arrives, reads it table by table; result: code
//   and
//                           number of tables
//   merge FILE              loads FILE and, as soon as a line arrives, merges all of its tables into an empty
//                           list; result: code and number of tables
#include "alignment/AlignTableReader.h"
#include "tests/alignment/AlignmentTestTools.h"

#include <QString>

#include <cstdio>
#include <string>
#include <vector>

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

int RemoveOwn(const QByteArray &hwId)
{
    AlignStore store;
    const AlignTable *const table = tests::AppendTableWithId(store, store.Tables, hwId);
    if (table == nullptr)
        return 1;
    AlignStore::ClearTableByHwId(&store.Tables, table->HwId.data());
    (void)std::printf("result %s\n", tests::HwIdsOf(store.Tables).join(',').constData());
    return 0;
}

/// Says that all is prepared and waits for a line; false when none comes.
bool WaitForLine()
{
    (void)std::puts("ready");
    (void)std::fflush(stdout);
    return std::getchar() != EOF;
}

int Merge(const QString &path)
{
    AlignStore store;
    if (store.LoadFile(path, store.ImportTables, true) != AlignResult::Ok)
        return 1;
    std::vector<AlignSelectionEntry> all;
    for (const AlignTable &table : store.ImportTables)
        all.push_back({std::string(AlignHwIdOf(table)), 0});
    if (!WaitForLine())
        return 1;
    const AlignResult result = store.MergeTables(store.Tables, store.ImportTables, all);
    (void)std::printf("result %s %d\n", tests::NameOf(result).constData(),
                      static_cast<int>(store.Tables.Count));
    return 0;
}

int Load(const QString &path)
{
    AlignStore store;
    if (store.AppendNewTable(store.Tables) == nullptr || !WaitForLine())
        return 1;
    const AlignResult result = store.LoadFile(path, store.Tables, true);
    (void)std::printf("result %s %d\n", tests::NameOf(result).constData(),
                      static_cast<int>(store.Tables.Count));
    return 0;
}

int Read(const QString &path)
{
    AlignTableReader reader;
    AlignTable table;
    AlignResult result = reader.Open(path);
    if (!WaitForLine())
        return 1;
    int tables = 0;
    while (result == AlignResult::Ok && reader.hasNext()) {
        result = reader.ReadNext(table);
        tables += result == AlignResult::Ok ? 1 : 0;
    }
    (void)std::printf("result %s %d\n", tests::NameOf(result).constData(), tables);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QList<QByteArray> arguments(argv + 1, argv + argc);
    if (arguments.size() >= 2 && arguments.at(0) == "remove")
        return Remove(arguments.at(1), arguments.mid(2));
    if (arguments.size() == 2 && arguments.at(0) == "remove-own")
        return RemoveOwn(arguments.at(1));
    if (arguments.size() == 2 && arguments.at(0) == "merge")
        return Merge(QString::fromLocal8Bit(arguments.at(1)));
    if (arguments.size() == 2 && arguments.at(0) == "load")
        return Load(QString::fromLocal8Bit(arguments.at(1)));
    if (arguments.size() == 2 && arguments.at(0) == "read")
        return Read(QString::fromLocal8Bit(arguments.at(1)));
    (void)std::fputs("usage: AlignmentProbe remove ID [STORED...] | remove-own ID | load FILE | read FILE | "
                     "merge FILE\n",
                     stderr);
    return 2;
}
