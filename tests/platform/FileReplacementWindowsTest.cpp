// SPDX-License-Identifier: MIT
// What a replaced file passes on to the new one on Windows.
#include "platform/FileReplacement.h"

#include "platform/FilePath.h"
#include "tests/support/FolderFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <windows.h>

#include <aclapi.h>
#undef ReplaceFile // the system's header renames ours, too

#include <array>
#include <memory>
#include <ostream>
#include <string>

using namespace Qt::StringLiterals;

using platform::ReplaceStep;

namespace {

/// Lets only the owner use the file; what the folder says no longer counts.
bool CloseToOthers(std::wstring file)
{
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(file.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr,
                              nullptr, nullptr, &descriptor) != ERROR_SUCCESS)
        return false;
    const std::unique_ptr<void, decltype(&LocalFree)> freedDescriptor(descriptor, LocalFree);
    EXPLICIT_ACCESS_W entry{};
    entry.grfAccessPermissions = FILE_ALL_ACCESS;
    entry.grfAccessMode = SET_ACCESS;
    entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    entry.Trustee.ptstrName = static_cast<LPWSTR>(owner);
    PACL list = nullptr;
    if (SetEntriesInAclW(1, &entry, nullptr, &list) != ERROR_SUCCESS)
        return false;
    const std::unique_ptr<void, decltype(&LocalFree)> freedList(list, LocalFree);
    return SetNamedSecurityInfoW(file.data(), SE_FILE_OBJECT,
                                 DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, nullptr,
                                 nullptr, list, nullptr) == ERROR_SUCCESS;
}

/// Whether the file's list gives everybody some right.
bool IsOpenToEverybody(std::wstring file)
{
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(file.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                              nullptr, &descriptor) != ERROR_SUCCESS)
        return true;
    const std::unique_ptr<void, decltype(&LocalFree)> freed(descriptor, LocalFree);
    std::array<BYTE, SECURITY_MAX_SID_SIZE> everybody{};
    DWORD size = everybody.size();
    CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size);
    for (DWORD i = 0; list != nullptr && i < list->AceCount; ++i) {
        void *entry = nullptr;
        if (GetAce(list, i, &entry) == FALSE)
            continue;
        const auto *const allowed = static_cast<const ACCESS_ALLOWED_ACE *>(entry);
        if (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
            EqualSid(const_cast<DWORD *>(&allowed->SidStart), everybody.data()) != FALSE)
            return true;
    }
    return list == nullptr;
}

} // namespace

class FileReplacementWindowsTest : public tests::FolderFixture
{
    Q_OBJECT

private slots:
    void theAccessListStays();
    void theAttributesStay();

private:
    static ReplaceStep Replace(const QString &file, const char *bytes)
    {
        return platform::ReplaceFile(
                   *platform::FileSystemPath(file),
                   [bytes](std::ostream &stream) { return static_cast<bool>(stream << bytes); })
            .Failed;
    }
    static QByteArray Contents(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
};

void FileReplacementWindowsTest::theAccessListStays()
{
    const QString file = path(u"f"_s);
    const std::wstring name = platform::FileSystemPath(file)->native();
    QCOMPARE(Replace(file, "old"), ReplaceStep::None);
    QVERIFY(IsOpenToEverybody(name)); // else nothing is shown below
    QVERIFY(CloseToOthers(name));
    QVERIFY(!IsOpenToEverybody(name));
    QCOMPARE(Replace(file, "new"), ReplaceStep::None);
    QVERIFY(!IsOpenToEverybody(name));
    QCOMPARE(Contents(file), QByteArray("new"));
    QCOMPARE(QDir(Folder->path()).entryList(QDir::Files), QStringList(u"f"_s));
}

void FileReplacementWindowsTest::theAttributesStay()
{
    const QString file = path(u"f"_s);
    const std::wstring name = platform::FileSystemPath(file)->native();
    QCOMPARE(Replace(file, "old"), ReplaceStep::None);
    QVERIFY(SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_HIDDEN) != FALSE);
    QVERIFY((GetFileAttributesW(name.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
    QCOMPARE(Replace(file, "new"), ReplaceStep::None);
    QVERIFY((GetFileAttributesW(name.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
    QCOMPARE(Contents(file), QByteArray("new"));
}

TARNVIK_TEST_MAIN(FileReplacementWindowsTest, QCoreApplication)

#include "FileReplacementWindowsTest.moc"
