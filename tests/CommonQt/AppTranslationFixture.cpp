// SPDX-License-Identifier: MIT
#include "tests/CommonQt/AppTranslationFixture.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

QString SampleText()
{
    return QCoreApplication::translate("Sample", "language");
}

QStringList Entries(const QMenu &menu)
{
    QStringList entries;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        entries.append(action->text() + u'|' + action->data().toString() +
                       (action->isChecked() ? u"|checked"_s : QString()));
    }
    return entries;
}

bool AppTranslationFixture::AddToWorkingFolder(const QString &translation, const QString &fileName)
{
    return Folder->Add(translation, u"working/%1"_s.arg(fileName));
}

void AppTranslationFixture::init()
{
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    StartLocale = QLocale();
    StartFolder = QDir::currentPath();
    Folder = std::make_unique<TranslationFolder>();
    QVERIFY(Folder->isValid());
    QVERIFY(QDir::setCurrent(Folder->path(u"working"_s)));
}

void AppTranslationFixture::cleanup()
{
    QLocale::setDefault(StartLocale);
    QVERIFY(QDir::setCurrent(StartFolder));
    Folder.reset();
}

} // namespace tests
