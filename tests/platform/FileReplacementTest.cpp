// SPDX-License-Identifier: MIT
// A file is replaced whole or not at all.
#include "platform/FileReplacement.h"

#include "platform/FilePath.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/Needs.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestMain.h"

#ifdef Q_OS_LINUX
#include "tests/support/WithoutPrivileges.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#endif

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <ostream>

using namespace Qt::StringLiterals;

using platform::ReplaceStep;

class FileReplacementTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void aFileIsMadeAndReplaced();
#ifdef Q_OS_LINUX // Qt does not tell the rights of Windows, and its links are files like any other
    void rightsStay();
    void aLinkStaysALink();
    void accessListsAndAttributesStay();
    void whatIsNoFileIsNotReplaced();
    void theOwnerStays_data();
    void theOwnerStays();
#endif
    void afterAFailureAllIsAsBefore_data();
    void afterAFailureAllIsAsBefore();
    void aReadOnlyFileIsNotReplaced();
    void aFullDiskLeavesTheOldFile();

private:
    static platform::ReplaceResult Replace(const QString &file, const QByteArray &bytes)
    {
        return platform::ReplaceFile(*platform::FileSystemPath(file), [&](std::ostream &stream) {
            return static_cast<bool>(stream.write(bytes.constData(), bytes.size()));
        });
    }
    static QByteArray Contents(const QString &file)
    {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(Folder->path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
};

void FileReplacementTest::aFileIsMadeAndReplaced()
{
    const QString file = path(u"fíle.ad"_s);
    for (const QByteArray &bytes : {QByteArray("old\r\n\n"), QByteArray(300'000, 'x'), QByteArray()}) {
        QCOMPARE(Replace(file, bytes).Failed, ReplaceStep::None);
        QCOMPARE(Contents(file), bytes);
        QCOMPARE(entries(), QStringList(u"fíle.ad"_s)); // nothing is left behind
    }
}

#ifdef Q_OS_LINUX
void FileReplacementTest::rightsStay()
{
    const QString file = path(u"f"_s);
    QCOMPARE(Replace(file, "1").Failed, ReplaceStep::None);
    QFile plain(path(u"plain"_s));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    QCOMPARE(QFile::permissions(file), plain.permissions()); // those of any new file
    const QFileDevice::Permissions rights = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                            QFileDevice::ReadUser | QFileDevice::WriteUser |
                                            QFileDevice::ExeOther | QFileDevice::ReadGroup;
    QVERIFY(QFile::setPermissions(file, rights));
    const QFileDevice::Permissions before = QFile::permissions(file); // with what root may do in any case
    QVERIFY(before != plain.permissions());
    QCOMPARE(Replace(file, "2").Failed, ReplaceStep::None);
    QCOMPARE(QFile::permissions(file), before);
}

void FileReplacementTest::aLinkStaysALink()
{
    QVERIFY(QDir(Folder->path()).mkdir(u"there"_s));
    const QString target = path(u"there/f"_s);
    QCOMPARE(Replace(target, "1").Failed, ReplaceStep::None);
    QVERIFY(QFile::link(target, path(u"link"_s)));
    QCOMPARE(Replace(path(u"link"_s), "2").Failed, ReplaceStep::None);
    QVERIFY(QFileInfo(path(u"link"_s)).isSymLink());
    QCOMPARE(Contents(target), QByteArray("2"));
    QVERIFY(QFile::remove(target));
    QCOMPARE(Replace(path(u"link"_s), "3").Failed, ReplaceStep::Check); // it points to nothing
    QVERIFY(QFile::link(path(u"round"_s), path(u"round"_s)));
    const platform::ReplaceResult result = Replace(path(u"round"_s), "4");
    QCOMPARE(result.Failed, ReplaceStep::Check);
    QVERIFY(result.Reason == std::errc::too_many_symbolic_link_levels);
}

void FileReplacementTest::whatIsNoFileIsNotReplaced()
{
    QCOMPARE(mkfifo(qPrintable(path(u"pipe"_s)), 0600), 0);
    QCOMPARE(Replace(path(u"pipe"_s), "1").Failed, ReplaceStep::Check);
    QCOMPARE(entries(), QStringList(u"pipe"_s));
}

void FileReplacementTest::theOwnerStays_data()
{
    QTest::addColumn<bool>("byRoot");
    QTest::addColumn<ReplaceStep>("failed");
    QTest::newRow("by root") << true << ReplaceStep::None;
    QTest::newRow("by the owner, who is not in the group") << false << ReplaceStep::Create;
}

void FileReplacementTest::theOwnerStays()
{
    // The system lets nobody else make the file of another owner and group that is to be replaced.
    TARNVIK_NEEDS(geteuid() == 0, "only root can give a file away, so owners are not tested");
    QFETCH(bool, byRoot);
    QFETCH(ReplaceStep, failed);
    constexpr uid_t owner = 65534; // as whom WithoutPrivileges acts
    constexpr gid_t group = 65533;
    const QByteArray file = QFile::encodeName(path(u"f"_s));
    QCOMPARE(Replace(path(u"f"_s), "old").Failed, ReplaceStep::None);
    QCOMPARE(chown(file.constData(), owner, group), 0);
    QCOMPARE(chmod(file.constData(), 01664), 0);
    QVERIFY(tests::OpenFoldersTo(Folder->path()));
    QCOMPARE(chmod(QFile::encodeName(Folder->path()).constData(), 0777), 0);
    {
        const std::unique_ptr<tests::WithoutPrivileges> user(byRoot ? nullptr : new tests::WithoutPrivileges);
        QVERIFY(byRoot || user->isValid());
        QCOMPARE(Replace(path(u"f"_s), "new").Failed, failed);
    }
    struct stat status = {};
    QCOMPARE(stat(file.constData(), &status), 0);
    QCOMPARE(status.st_uid, owner);
    QCOMPARE(status.st_gid, group);
    QCOMPARE(status.st_mode & 07777U, 01664U);
    QCOMPARE(Contents(path(u"f"_s)), QByteArray(failed == ReplaceStep::None ? "new" : "old"));
    QCOMPARE(entries(), QStringList(u"f"_s));
}

void FileReplacementTest::accessListsAndAttributesStay()
{
    // In the kernel's form: version 2, then tag, rights and id of each entry; here owner, user 1234, group,
    // mask and others.
    const auto entry = [](char tag, char rights, const QByteArray &id = "\xFF\xFF\xFF\xFF") {
        return QByteArray(1, tag) + QByteArray(1, '\0') + QByteArray(1, rights) + QByteArray(1, '\0') + id;
    };
    const QByteArray list = QByteArray("\2\0\0\0", 4) + entry(0x01, 6) +
                            entry(0x02, 6, QByteArray("\xD2\x04\0\0", 4)) + entry(0x04, 0) + entry(0x10, 6) +
                            entry(0x20, 0);
    const auto attribute = [](const QString &file, const char *name) {
        QByteArray value(200, '\0');
        const ssize_t size = getxattr(QFile::encodeName(file).constData(), name, value.data(), 200);
        return size < 0 ? QByteArray("none") : value.first(static_cast<qsizetype>(size));
    };
    const auto set = [](const QString &file, const char *name, const QByteArray &value) {
        return setxattr(QFile::encodeName(file).constData(), name, value.constData(),
                        static_cast<std::size_t>(value.size()), 0) == 0;
    };
    const QString file = path(u"f"_s);
    QCOMPARE(Replace(file, "1").Failed, ReplaceStep::None);
    // Some file systems know neither, an older tmpfs for one; every other reason is a fault of the test.
    const bool hasThem = set(file, "user.note", "kept") && set(file, "system.posix_acl_access", list);
    QVERIFY(hasThem || errno == ENOTSUP);
    TARNVIK_NEEDS(hasThem,
                  "this file system has no access lists or attributes of users, so they are not tested");
    const QFileDevice::Permissions before = QFile::permissions(file);
    QCOMPARE(Replace(file, "2").Failed, ReplaceStep::None);
    QCOMPARE(attribute(file, "user.note"), QByteArray("kept"));
    QCOMPARE(attribute(file, "system.posix_acl_access"), list);
    QCOMPARE(QFile::permissions(file), before);

    // A file without list does not get that of the folder.
    const QString plain = path(u"plain"_s);
    QCOMPARE(Replace(plain, "1").Failed, ReplaceStep::None);
    QVERIFY(set(Folder->path(), "system.posix_acl_default", list));
    QCOMPARE(Replace(plain, "2").Failed, ReplaceStep::None);
    QCOMPARE(attribute(plain, "system.posix_acl_access"), QByteArray("none"));
}

#endif

void FileReplacementTest::afterAFailureAllIsAsBefore_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("writes");
    QTest::addColumn<bool>("mayReplace");
    QTest::addColumn<ReplaceStep>("step");
    QTest::newRow("the writing fails") << u"f"_s << false << true << ReplaceStep::Write;
    QTest::newRow("a folder is in the way") << u"folder"_s << true << true << ReplaceStep::Check;
    QTest::newRow("the folder is missing") << u"missing/f"_s << true << true << ReplaceStep::Create;
    QTest::newRow("the last look forbids it") << u"f"_s << true << false << ReplaceStep::LastLook;
    QTest::newRow("the writing of a new file fails") << u"new"_s << false << true << ReplaceStep::Write;
}

void FileReplacementTest::afterAFailureAllIsAsBefore()
{
    QFETCH(QString, file);
    QFETCH(bool, writes);
    QFETCH(bool, mayReplace);
    QFETCH(ReplaceStep, step);
    QVERIFY(QDir(Folder->path()).mkdir(u"folder"_s));
    QCOMPARE(Replace(path(u"f"_s), "old").Failed, ReplaceStep::None);
    const QStringList before = entries();
    const platform::ReplaceResult result = platform::ReplaceFile(
        *platform::FileSystemPath(path(file)),
        [writes](std::ostream &stream) {
            stream << "new";
            return writes;
        },
        [mayReplace] { return mayReplace; });
    QCOMPARE(result.Failed, step);
    QVERIFY(result.Reason);
    if (step == ReplaceStep::Write)
        QVERIFY(result.Reason == std::errc::io_error); // no earlier call's error
    QCOMPARE(Contents(path(u"f"_s)), QByteArray("old"));
    QCOMPARE(entries(), before);
}

void FileReplacementTest::aReadOnlyFileIsNotReplaced()
{
    const QString file = path(u"f"_s);
    QCOMPARE(Replace(file, "old").Failed, ReplaceStep::None);
    const QFileDevice::Permissions rights =
        QFileDevice::ReadOwner | QFileDevice::ReadUser | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    QVERIFY(QFile::setPermissions(file, rights));
#ifdef Q_OS_LINUX
    // The folder may be written to, so that nothing but the file's own rights is in the way.
    QVERIFY(tests::OpenFoldersTo(Folder->path()));
    QVERIFY(QFile::setPermissions(Folder->path(), QFile::permissions(Folder->path()) |
                                                      QFileDevice::WriteOther | QFileDevice::ReadOther));
    auto user = std::make_unique<tests::WithoutPrivileges>();
    QVERIFY(user->isValid());
#endif
    QCOMPARE(Replace(file, "new").Failed, ReplaceStep::Check);
#ifdef Q_OS_LINUX
    user.reset();
#endif
    QCOMPARE(Contents(file), QByteArray("old"));
    QCOMPARE(entries(), QStringList(u"f"_s));
}

void FileReplacementTest::aFullDiskLeavesTheOldFile()
{
    TARNVIK_NEEDS_SMALL_DISK();
    QVERIFY(tests::EmptySmallDisk());
    const QString file = tests::SmallDisk() + u"/f"_s;
    const QByteArray old(10 * tests::SmallDiskBlock, 'o');
    QCOMPARE(Replace(file, old).Failed, ReplaceStep::None);
    QVERIFY(tests::FillSmallDisk(2));
    QCOMPARE(Replace(file, QByteArray(old.size(), 'n')).Failed, ReplaceStep::Write);
    QCOMPARE(Contents(file), old);
    QCOMPARE(QDir(tests::SmallDisk()).entryList(QDir::Files), (QStringList{u"f"_s, u"filler"_s}));
}

TARNVIK_TEST_MAIN(FileReplacementTest, QCoreApplication)

#include "FileReplacementTest.moc"
