// SPDX-License-Identifier: MIT
#include "tests/alignment_merge/AlignmentSaveFixture.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

void AlignmentSaveFixture::init()
{
    FolderFixture::init();
    QVERIFY(QDir(Folder->path()).mkpath(u"import"_s));
    DriversFolder = Folder->path();
    Rows.Clear();
    Asked.clear();
    Proposed.clear();
    AnswerToUnchanged = true;
    AnswerToFile = [](const QString &proposal) { return proposal; };
}

void AlignmentSaveFixture::LoadStation(const QStringList &imports)
{
    QCOMPARE(Rows.LoadFolder(Folder->path(), u"TarnvikDriver_*.ad"_s), QString());
    for (const QString &name : imports)
        QCOMPARE(Rows.ReadFile(imported(name)), QString());
}

QList<AlignmentChoice> AlignmentSaveFixture::Choices(const QStringList &changes)
{
    Rows.Sort();
    QList<AlignmentChoice> chosen;
    for (const AlignmentRow &row : Rows.rows()) {
        const bool changed = changes.contains(row.driver + u'/' + row.hardwareId);
        chosen.append({row.driver, row.hardwareId, IsTakenByDefault(OfferOf(row)) != changed});
    }
    return chosen;
}

QString AlignmentSaveFixture::Save(const QList<AlignmentChoice> &chosen)
{
    AlignmentSaveQuestions questions;
    questions.SaveUnchanged = [this](const QString &driver) {
        Asked.append(driver);
        return AnswerToUnchanged;
    };
    questions.FileToWrite = [this](const QString &proposal) {
        Proposed.append(proposal);
        return AnswerToFile(proposal);
    };
    return SaveAlignment(MarkRowsAndCollectSaveGroups(chosen, Rows, DriversFolder), questions);
}

} // namespace tests
