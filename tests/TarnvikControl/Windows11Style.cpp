// SPDX-License-Identifier: MIT
// A style with the name of one that is at home on Windows only, so that its menu entries can be tested
// everywhere. It draws like Fusion.
#include <QProxyStyle>
#include <QStylePlugin>
#include <QtPlugin>

using namespace Qt::StringLiterals;

class Windows11Style : public QStylePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QStyleFactoryInterface_iid FILE "Windows11Style.json")

public:
    QStyle *create(const QString & /*key*/) override { return new QProxyStyle(u"Fusion"_s); }
};

Q_IMPORT_PLUGIN(Windows11Style)

#include "Windows11Style.moc"
