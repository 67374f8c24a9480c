// SPDX-License-Identifier: MIT
#include "CommonQt/PathUrlOpener.h"

#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// No scheme, and the letters of Windows' drives.
QStringList PathSchemes()
{
    QStringList schemes = {QString()};
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        schemes.append(QString(QChar(letter)));
    return schemes;
}

/// The path that was parsed as the URL.
QString PathOf(const QUrl &url)
{
    QString path = url.path(QUrl::FullyDecoded);
    if (!url.host().isEmpty()) // a share of another machine
        path.prepend(u"//"_s + url.host(QUrl::FullyDecoded));
    if (!url.scheme().isEmpty())
        path.prepend(url.scheme() + u':');
    if (url.hasQuery())
        path.append(u'?' + url.query(QUrl::FullyDecoded));
    if (url.hasFragment())
        path.append(u'#' + url.fragment(QUrl::FullyDecoded));
    return path;
}

} // namespace

PathUrlOpener::PathUrlOpener()
{
    const QStringList schemes = PathSchemes();
    for (const QString &scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "SlotOpen");
}

PathUrlOpener::~PathUrlOpener()
{
    const QStringList schemes = PathSchemes();
    for (const QString &scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

void PathUrlOpener::SlotOpen(const QUrl &url)
{
    // A handler's own call goes to the system.
    const QString path = PathOf(url);
    const bool readsLikeItsPath = url.toString(QUrl::FullyEncoded) == path;
    (void)QDesktopServices::openUrl(readsLikeItsPath ? url : QUrl::fromLocalFile(path));
}
