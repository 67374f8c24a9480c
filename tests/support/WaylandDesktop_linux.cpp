// SPDX-License-Identifier: MIT
// A script starts the desktop; swaymsg finds windows on it, wtype is the hands and grim the eyes. The bar's
// side of the tray is spoken here: org.kde.StatusNotifierItem and com.canonical.dbusmenu.
#include "tests/support/WaylandDesktop.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

constexpr int CommandTimeoutMs = 10000;

/// What a program prints; nothing when it fails.
std::optional<QByteArray> Output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(CommandTimeoutMs) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput();
}

bool Run(const QString &program, const QStringList &arguments)
{
    return Output(program, arguments).has_value();
}

/// Appends the windows below a node of the compositor's tree.
void CollectWindows(const QJsonObject &node, QList<WaylandWindow> &windows)
{
    if (node[u"app_id"].isString())
        windows.append({node[u"id"].toInteger(), node[u"name"].toString(), node[u"app_id"].toString(),
                        node[u"focused"].toBool()});
    for (const QString &kind : {u"nodes"_s, u"floating_nodes"_s}) {
        const QJsonArray below = node[kind].toArray();
        for (const QJsonValue &child : below)
            CollectWindows(child.toObject(), windows);
    }
}

WaylandWindow NewestWindow(const QString &title)
{
    const QList<WaylandWindow> windows = WaylandDesktop::windows(title);
    return windows.isEmpty() ? WaylandWindow() : windows.last();
}

bool Command(const WaylandWindow &window, const QString &command)
{
    return window.Id != 0 && Run(u"swaymsg"_s, {u"[con_id=%1] %2"_s.arg(window.Id).arg(command)});
}

/// Where something lies on the session's bus.
struct BusPlace
{
    QString Service;
    QString Path;
};

QDBusConnection Session()
{
    static const QString name = u"tarnvik-test-wayland"_s;
    static const QDBusConnection connection =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
    return connection;
}

QVariantList Call(const BusPlace &place, const QString &interface, const QString &method,
                  const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(place.Service, place.Path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = Session().call(call, QDBus::Block, CommandTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QVariant Property(const BusPlace &place, const QString &interface, const QString &name)
{
    const QVariantList answer =
        Call(place, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, name});
    return answer.value(0).value<QDBusVariant>().variant();
}

const QString ItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString MenuInterface = QStringLiteral("com.canonical.dbusmenu");

std::optional<BusPlace> Item()
{
    const QString watcher = u"org.kde.StatusNotifierWatcher"_s;
    const QStringList items =
        Property({watcher, u"/StatusNotifierWatcher"_s}, watcher, u"RegisteredStatusNotifierItems"_s)
            .toStringList();
    if (items.size() != 1)
        return std::nullopt;
    const qsizetype slash = items.first().indexOf(u'/');
    return BusPlace{items.first().first(slash), items.first().sliced(slash)};
}

QVariant ItemProperty(const QString &name)
{
    const std::optional<BusPlace> item = Item();
    return item ? Property(*item, ItemInterface, name) : QVariant();
}

/// An entry of the icon's menu.
struct MenuEntry
{
    int Id = 0;
    QString Text;
};

std::optional<BusPlace> MenuOf(const std::optional<BusPlace> &item)
{
    if (!item)
        return std::nullopt;
    const QVariant path = Property(*item, ItemInterface, u"Menu"_s);
    return BusPlace{item->Service, path.value<QDBusObjectPath>().path()};
}

QList<MenuEntry> MenuEntries()
{
    QList<MenuEntry> entries;
    const std::optional<BusPlace> menu = MenuOf(Item());
    if (!menu)
        return entries;
    const QVariantList layout = Call(*menu, MenuInterface, u"GetLayout"_s, {0, -1, QStringList()});
    if (layout.size() < 2)
        return entries;
    // (number, properties, entries as variants of the same kind)
    const auto readEntry = [](const QDBusArgument &from, int &id, QVariantMap &properties,
                              QVariantList &children) {
        from.beginStructure();
        from >> id >> properties >> children;
        from.endStructure();
    };
    int id = 0;
    QVariantMap properties;
    QVariantList children;
    readEntry(layout.at(1).value<QDBusArgument>(), id, properties, children);
    for (const QVariant &child : std::as_const(children)) {
        QVariantList none;
        readEntry(child.value<QDBusArgument>(), id, properties, none);
        entries.append({id, properties.value(u"label"_s).toString().remove(u'_')});
    }
    return entries;
}

} // namespace

WaylandDesktop::WaylandDesktop()
{
    Desktop.start(QStringLiteral(TARNVIK_SCRIPTS "/virtual-desktop"), {u"1000x700"_s, u"--wayland"_s});
    if (!Desktop.waitForReadyRead(-1)) { // the script gives up by itself
        Desktop.waitForFinished(CommandTimeoutMs);
        Error = Desktop.errorString() + u": "_s + QString::fromUtf8(Desktop.readAllStandardError());
        return;
    }
    const QByteArrayList places = Desktop.readAllStandardOutput().trimmed().split(' ');
    qputenv("WAYLAND_DISPLAY", places.value(0));
    qputenv("SWAYSOCK", places.value(1));
    qputenv("DBUS_SESSION_BUS_ADDRESS", places.value(2));
    qputenv("QT_QPA_PLATFORM", "wayland");
    qunsetenv("DISPLAY");
    qunsetenv("SESSION_MANAGER");
}

WaylandDesktop::~WaylandDesktop()
{
    Desktop.closeWriteChannel(); // at the end of its input the desktop ends
    if (!Desktop.waitForFinished(CommandTimeoutMs))
        Desktop.kill();
}

QList<WaylandWindow> WaylandDesktop::windows(const QString &title)
{
    QList<WaylandWindow> windows;
    const QByteArray tree = Output(u"swaymsg"_s, {u"-t"_s, u"get_tree"_s}).value_or(QByteArray());
    CollectWindows(QJsonDocument::fromJson(tree).object(), windows);
    windows.removeIf([&title](const WaylandWindow &window) { return window.Title != title; });
    std::sort(windows.begin(), windows.end(), // which the compositor lists by who lies on top
              [](const WaylandWindow &left, const WaylandWindow &right) { return left.Id < right.Id; });
    return windows;
}

bool WaylandDesktop::Press(const QString &title, const QString &key)
{
    QStringList arguments;
    QStringList names = key.split(u'+');
    const QString last = names.takeLast();
    for (const QString &modifier : std::as_const(names))
        arguments += {u"-M"_s, modifier};
    arguments += {u"-k"_s, last};
    return Command(NewestWindow(title), u"focus"_s) && Run(u"wtype"_s, arguments);
}

bool WaylandDesktop::Close(const QString &title)
{
    return Command(NewestWindow(title), u"kill"_s);
}

bool WaylandDesktop::SavePicture(const QString &file)
{
    return Run(u"grim"_s, {file});
}

bool TrayItem::isThere()
{
    return Item().has_value();
}

QString TrayItem::title()
{
    return ItemProperty(u"Title"_s).toString();
}

int TrayItem::iconWidth()
{
    const QVariant pictures = ItemProperty(u"IconPixmap"_s);
    if (!pictures.isValid())
        return 0;
    const auto list = pictures.value<QDBusArgument>();
    int widest = 0;
    list.beginArray();
    while (!list.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        list.beginStructure();
        list >> width >> height >> pixels;
        list.endStructure();
        if (pixels.size() == qsizetype{4} * width * height)
            widest = std::max(widest, width);
    }
    list.endArray();
    return widest;
}

bool TrayItem::Activate()
{
    const std::optional<BusPlace> item = Item();
    if (!item)
        return false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(item->Service, item->Path, ItemInterface, u"Activate"_s);
    call.setArguments({0, 0});
    return Session().call(call, QDBus::Block, CommandTimeoutMs).type() == QDBusMessage::ReplyMessage;
}

QStringList TrayItem::menu()
{
    QStringList texts;
    const QList<MenuEntry> entries = MenuEntries();
    for (const MenuEntry &entry : entries)
        texts.append(entry.Text);
    return texts;
}

bool TrayItem::Choose(const QString &text)
{
    const std::optional<BusPlace> menu = MenuOf(Item());
    const QList<MenuEntry> entries = MenuEntries();
    for (const MenuEntry &entry : entries) {
        if (entry.Text == text && menu) {
            QDBusMessage call =
                QDBusMessage::createMethodCall(menu->Service, menu->Path, MenuInterface, u"Event"_s);
            call.setArguments({entry.Id, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
            return Session().send(call); // the answer may come only when a box is closed
        }
    }
    return false;
}

} // namespace tests
