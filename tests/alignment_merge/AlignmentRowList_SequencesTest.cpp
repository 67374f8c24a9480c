// SPDX-License-Identifier: MIT
// Random sequences of reading files, against a plain account of what the list should hold.
#include "alignment_merge/AlignmentRowList.h"

#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/RowsInWords.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

using tests::FileTable;
using tests::WriteAlignmentFile;

namespace {

/// A plain account of what the list should hold: every version of a pair ever read, in order.
struct ModelRow
{
    QString Driver;
    QString HardwareId;
    bool DriverIsNew = false;
    bool IsPresent = false;
    FileTable PresentVersion;
    QString PresentFile;
    QList<std::pair<std::uint64_t, QString>> Imported;
};

using Version = std::pair<std::uint64_t, QString>;

/// The first of the versions with the latest date.
Version Newest(const QList<Version> &versions)
{
    return *std::max_element(versions.begin(), versions.end(),
                             [](const Version &a, const Version &b) { return a.first < b.first; });
}

class Model
{
public:
    void Clear() { Rows.clear(); }

    void Read(const QString &file, const QString &driver, const QList<FileTable> &tables)
    {
        bool isNew = true;
        for (const ModelRow &row : Rows)
            isNew = isNew && row.Driver != driver;
        for (const FileTable &table : tables) {
            const QString id = QString::fromLatin1(table.HwId);
            auto row = std::find_if(Rows.begin(), Rows.end(), [&](const ModelRow &other) {
                return other.Driver == driver && other.HardwareId == id;
            });
            if (row == Rows.end()) {
                Rows.append({driver, id, isNew, false, {}, {}, {}});
                row = Rows.end() - 1;
            }
            row->Imported.append({table.AlignedAt, file});
        }
    }

    void MakeAllPresent()
    {
        for (ModelRow &row : Rows) {
            const Version newest = Newest(row.Imported);
            row.IsPresent = true;
            row.PresentVersion.AlignedAt = newest.first;
            row.PresentFile = newest.second;
            row.Imported.clear();
        }
    }

    [[nodiscard]] QStringList InWords() const
    {
        QStringList words;
        for (const ModelRow &model : Rows) {
            AlignmentRow row;
            row.driver = model.Driver;
            row.hardwareId = model.HardwareId;
            row.Set(AlignmentRow::driverIsNew, model.DriverIsNew);
            if (model.IsPresent) {
                row.alignedAt = model.PresentVersion.AlignedAt;
                row.filePath = model.PresentFile;
                QList<Version> others = model.Imported;
                others.removeIf([&](const Version &version) { return version.first == row.alignedAt; });
                if (!others.isEmpty()) {
                    row.state = AlignmentRow::UpdatePresent;
                    row.updateAlignedAt = Newest(others).first;
                    row.updateFilePath = Newest(others).second;
                }
            } else {
                row.state = AlignmentRow::NewInDataBase;
                row.alignedAt = Newest(model.Imported).first;
                row.filePath = Newest(model.Imported).second;
            }
            words.append(tests::InWords(row));
        }
        return words;
    }

private:
    QList<ModelRow> Rows;
};

/// A file of the random sequences.
struct PoolFile
{
    QString Path;
    QString Driver;
    QList<FileTable> Tables;
};

} // namespace

class AlignmentRowList_SequencesTest : public QObject
{
    Q_OBJECT

private slots:
    void anySequenceOfImportsKeepsEachPairOnce();
};

void AlignmentRowList_SequencesTest::anySequenceOfImportsKeepsEachPairOnce()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    std::mt19937 random(20240101);
    const auto upTo = [&random](unsigned most) { return static_cast<int>(random() % (most + 1)); };
    const QStringList drivers = {u"LimeMini"_s, u"RTL-SDR"_s, u"Driver 7"_s};
    const SdrType types[] = {SdrType::LimeMini, SdrType::RtlSdr, static_cast<SdrType>(7)};
    QList<PoolFile> pool;
    for (int i = 0; i < 40; ++i) {
        const int driver = upTo(2);
        PoolFile file{folder.filePath(u"%1_%2.ad"_s.arg(i % 8).arg(i, 2, 10, QLatin1Char('0'))),
                      drivers.at(driver),
                      {}};
        for (int table = upTo(4); table >= 0; --table) // one hardware id may come up twice
            file.Tables.append({QByteArray::number(upTo(3)), tests::Day("2024-01-01") + 86'400ULL * upTo(3)});
        QVERIFY(WriteAlignmentFile(file.Path, types[driver], file.Tables));
        pool.append(file);
    }
    for (int sequence = 0; sequence < 1000; ++sequence) {
        AlignmentRowList list;
        Model model;
        for (int step = upTo(9); step >= 0; --step) {
            if (const int action = upTo(9); action == 0) {
                list.Clear();
                model.Clear();
            } else if (action == 1) {
                const QString start = QString::number(upTo(8)); // of no file at all for 8
                list.Clear();
                QCOMPARE(list.LoadFolder(folder.path(), start + u"_*.ad"_s), QString());
                model.Clear();
                for (const PoolFile &file : pool) { // within one start the pool is in the order of the names
                    if (QFileInfo(file.Path).fileName().startsWith(start))
                        model.Read(file.Path, file.Driver, file.Tables);
                }
                model.MakeAllPresent();
            } else {
                const PoolFile &file = pool.at(upTo(39));
                QCOMPARE(list.ReadFile(file.Path), QString());
                model.Read(file.Path, file.Driver, file.Tables);
            }
            QStringList actual = tests::InWords(list);
            QStringList expected = model.InWords();
            if (upTo(1) == 0)
                list.Sort(); // as a dialog does after each step
            actual.sort();
            expected.sort();
            QVERIFY2(actual == expected, qPrintable(u"sequence %1\n%2\nexpected\n%3"_s.arg(sequence).arg(
                                             actual.join(u'\n'), expected.join(u'\n'))));
        }
    }
}

TARNVIK_TEST_MAIN(AlignmentRowList_SequencesTest, QCoreApplication)

#include "AlignmentRowList_SequencesTest.moc"
