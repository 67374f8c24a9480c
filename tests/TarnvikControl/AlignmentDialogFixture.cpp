// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/AlignmentDialogFixture.h"

#include "Common_Files/TarnvikBasic.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>

#include <algorithm>

namespace tests {

AlignmentDialogFixture::AlignmentDialogFixture()
{
    (void)Dialog.LoadFolder(QString(), QStringLiteral("TarnvikDriver_*.ad"));
    Dialog.show();
    (void)QTest::qWaitForWindowActive(&Dialog);
}

QPushButton &AlignmentDialogFixture::button(const QString &text) const
{
    const QList<QPushButton *> buttons = Dialog.findChildren<QPushButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [&](const QPushButton *other) { return other->text() == text; });
    if (found == buttons.end())
        qFatal("there is no button %s", qPrintable(text));
    return **found;
}

QTreeWidgetItem *AlignmentDialogFixture::item(const QString &driver, const QString &hardwareId) const
{
    const QList<QTreeWidgetItem *> items =
        tree().findItems(hardwareId, Qt::MatchExactly | Qt::MatchRecursive);
    const auto found = std::find_if(items.begin(), items.end(), [&](const QTreeWidgetItem *other) {
        return other->parent() && other->parent()->text(0) == driver;
    });
    return found != items.end() ? *found : nullptr;
}

QStringList AlignmentDialogFixture::lines() const
{
    QStringList lines;
    const QTreeWidgetItem *line = tree().topLevelItem(0);
    for (; line; line = tree().itemBelow(line)) {
        QString text = line->text(0);
        if (line->data(0, Qt::CheckStateRole).isValid())
            text.prepend(line->checkState(0) == Qt::Checked ? QStringLiteral("[x] ")
                                                            : QStringLiteral("[ ] "));
        lines.append(line->parent() ? text + QStringLiteral(" | ") + line->text(1) : text + line->text(1));
    }
    return lines;
}

QString AlignmentDialogFixture::recorderFolder()
{
    return QTarnvikBasic::GetRecorderFile(QString());
}

QString AlignmentDialogFixture::recorderFile(const QString &name)
{
    return recorderFolder() + u'/' + name;
}

QString AlignmentDialogFixture::importFile(const QString &name)
{
    return QDir::tempPath() + QStringLiteral("/import/") + name;
}

bool AlignmentDialogFixture::prepareFolders()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillane GmbH"));
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
    const QString import = QDir::tempPath() + QStringLiteral("/import");
    return QDir(recorderFolder()).removeRecursively() && QDir().mkpath(recorderFolder()) &&
           QDir(import).removeRecursively() && QDir().mkpath(import);
}

} // namespace tests
