// SPDX-License-Identifier: MIT
// The interfaces and numbers are those of AT-SPI 2 (at-spi2-core: xml/*.xml, atspi-constants.h).
#include "tests/support/ScreenReader.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

constexpr int CallTimeoutMs = 10000;
const QString SessionName = QStringLiteral("tarnvik-test-session");
const QString BusName = QStringLiteral("tarnvik-test-accessibility");
const QString AccessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString ActionInterface = QStringLiteral("org.a11y.atspi.Action");
const QString TextInterface = QStringLiteral("org.a11y.atspi.Text");
const QString EditableTextInterface = QStringLiteral("org.a11y.atspi.EditableText");
const QString RegistryService = QStringLiteral("org.a11y.atspi.Registry");
const QString PropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// Bits of AtspiStateType.
constexpr int StateChecked = 4;
constexpr int StateExpanded = 10;
constexpr int StateFocused = 12;
constexpr int StateShowing = 25;

QDBusConnection AccessibilityBus()
{
    return QDBusConnection(BusName);
}

} // namespace

Accessible::Accessible(QString service, QString path) : Service(std::move(service)), Path(std::move(path)) {}

QVariantList Accessible::Call(const QString &interface, const QString &method,
                              const QVariantList &arguments) const
{
    if (isNull())
        return {};
    QDBusMessage call = QDBusMessage::createMethodCall(Service, Path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = AccessibilityBus().call(call, QDBus::Block, CallTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QString Accessible::role() const
{
    return Call(AccessibleInterface, u"GetRoleName"_s).value(0).toString();
}

QString Accessible::name() const
{
    const QVariant name = Call(PropertiesInterface, u"Get"_s, {AccessibleInterface, u"Name"_s}).value(0);
    return name.value<QDBusVariant>().variant().toString();
}

bool Accessible::hasState(int state) const
{
    const QVariant answer = Call(AccessibleInterface, u"GetState"_s).value(0);
    if (!answer.isValid())
        return false;
    const auto words = qdbus_cast<QList<uint>>(answer);
    return (words.value(state / 32) >> (state % 32) & 1) != 0;
}

bool Accessible::isShowing() const
{
    return hasState(StateShowing);
}

bool Accessible::isFocused() const
{
    return hasState(StateFocused);
}

bool Accessible::isChecked() const
{
    return hasState(StateChecked);
}

bool Accessible::isExpanded() const
{
    return hasState(StateExpanded);
}

QList<Accessible> Accessible::children() const
{
    QList<Accessible> children;
    const QVariant answer = Call(AccessibleInterface, u"GetChildren"_s).value(0);
    if (!answer.isValid())
        return children;
    const auto list = answer.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        children.append(Accessible(service, path.path()));
    }
    list.endArray();
    return children;
}

QList<Accessible> Accessible::shownDescendants() const
{
    QList<Accessible> shown;
    const QList<Accessible> all = children();
    for (const Accessible &child : all) {
        if (child.isShowing()) {
            shown.append(child);
            shown.append(child.shownDescendants());
        }
    }
    return shown;
}

Accessible Accessible::find(const QString &role, const QString &name) const
{
    const QList<Accessible> all = children();
    for (const Accessible &child : all) {
        if (child.role() == role && child.name() == name)
            return child;
        const Accessible found = child.find(role, name);
        if (!found.isNull())
            return found;
    }
    return {};
}

Accessible Accessible::focused() const
{
    const QList<Accessible> all = children();
    for (const Accessible &child : all) {
        const Accessible inside = child.focused();
        if (!inside.isNull())
            return inside;
        if (child.isFocused())
            return child;
    }
    return {};
}

QString Accessible::text() const
{
    return Call(TextInterface, u"GetText"_s, {0, -1}).value(0).toString();
}

bool Accessible::SetText(const QString &text) const
{
    return Call(EditableTextInterface, u"SetTextContents"_s, {text}).value(0).toBool();
}

bool Accessible::Act() const
{
    if (isNull())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(Service, Path, ActionInterface, u"DoAction"_s);
    call.setArguments({0});
    return AccessibilityBus().send(call);
}

ScreenReader::ScreenReader()
{
    Bus.setStandardErrorFile(QProcess::nullDevice()); // it tells of each program that it starts
    Bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
    if (!Bus.waitForReadyRead(CallTimeoutMs)) {
        Error = u"no D-Bus session: "_s + Bus.errorString();
        return;
    }
    const QString address = QString::fromUtf8(Bus.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    QDBusConnection session = QDBusConnection::connectToBus(address, SessionName);
    const auto ask = [&session](const QString &interface, const QString &method,
                                const QVariantList &arguments) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, interface, method);
        call.setArguments(arguments);
        return session.call(call, QDBus::Block, CallTimeoutMs);
    };
    const QDBusMessage bus = ask(u"org.a11y.Bus"_s, u"GetAddress"_s, {});
    // Programs make themselves known only while somebody listens.
    const QDBusMessage enabled =
        ask(PropertiesInterface, u"Set"_s,
            {u"org.a11y.Status"_s, u"ScreenReaderEnabled"_s, QVariant::fromValue(QDBusVariant(true))});
    if (bus.type() != QDBusMessage::ReplyMessage || enabled.type() != QDBusMessage::ReplyMessage) {
        Error = u"no bus of assistive technology (at-spi2-core): "_s + bus.errorMessage() + u' ' +
                enabled.errorMessage();
        return;
    }
    QDBusConnection accessibility =
        QDBusConnection::connectToBus(bus.arguments().value(0).toString(), BusName);
    // Programs tell only what somebody has asked for.
    QDBusMessage listen = QDBusMessage::createMethodCall(RegistryService, u"/org/a11y/atspi/registry"_s,
                                                         u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
    listen.setArguments({u"object:"_s});
    const bool hears = accessibility.connect(QString(), QString(), u"org.a11y.atspi.Event.Object"_s,
                                             QString(), this, SLOT(Hear(QDBusMessage)));
    if (!hears ||
        accessibility.call(listen, QDBus::Block, CallTimeoutMs).type() != QDBusMessage::ReplyMessage)
        Error = u"the bus of assistive technology does not answer"_s;
}

ScreenReader::~ScreenReader()
{
    QDBusConnection::disconnectFromBus(BusName);
    QDBusConnection::disconnectFromBus(SessionName);
    Bus.terminate(); // what it started ends with it
    if (!Bus.waitForFinished(CallTimeoutMs))
        Bus.kill();
}

void ScreenReader::Forget()
{
    QCoreApplication::processEvents(); // what has been told already
    Events.clear();
    ChangedNames.clear();
    Announcements.clear();
}

void ScreenReader::Hear(const QDBusMessage &event)
{
    // Kind in detail, two numbers, a value, the application.
    const QString detail = event.arguments().value(0).toString();
    Events.append(event.member() + u':' + detail);
    if (event.member() == QLatin1String("PropertyChange") && detail == QLatin1String("accessible-name"))
        ChangedNames.append(Accessible(event.service(), event.path()).name());
    if (event.member() == QLatin1String("Announcement"))
        Announcements.append(event.arguments().value(3).value<QDBusVariant>().variant().toString());
}

Accessible ScreenReader::program(qint64 processId)
{
    const Accessible desktop(RegistryService, u"/org/a11y/atspi/accessible/root"_s);
    const QList<Accessible> programs = desktop.children();
    for (const Accessible &program : programs) {
        const QDBusReply<uint> pid = AccessibilityBus().interface()->servicePid(program.service());
        if (pid.isValid() && pid.value() == processId)
            return program;
    }
    return {};
}

} // namespace tests
