// SPDX-License-Identifier: MIT
// Programs as a screen reader meets them: by AT-SPI over D-Bus, without pictures, keys or mouse.
#pragma once

#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tests {

/// A window, control or line of another program. It may vanish at any time; a vanished one has no role, name,
/// states or children.
class Accessible
{
public:
    Accessible() = default;
    Accessible(QString service, QString path);

    [[nodiscard]] bool isNull() const { return Path.isEmpty(); }
    /// The name of its program on the bus.
    [[nodiscard]] const QString &service() const { return Service; }
    /// What it is, as "push button".
    [[nodiscard]] QString role() const;
    /// What is said for it.
    [[nodiscard]] QString name() const;
    [[nodiscard]] bool isShowing() const;
    [[nodiscard]] bool isFocused() const;
    [[nodiscard]] bool isChecked() const;
    [[nodiscard]] bool isExpanded() const;
    [[nodiscard]] QList<Accessible> children() const;
    /// All below it that are shown, parents first. What is below a hidden one is not looked at.
    [[nodiscard]] QList<Accessible> shownDescendants() const;
    /// The first below it with this role and name, shown or not; null when there is none.
    [[nodiscard]] Accessible find(const QString &role, const QString &name) const;
    /// The first below it that has the keyboard and no child that has it.
    [[nodiscard]] Accessible focused() const;
    /// The content of a text field or view.
    [[nodiscard]] QString text() const;
    bool SetText(const QString &text) const;
    /// Begins its first action, which is to press it, and does not await the answer: a button that opens a
    /// modal dialog answers only when that is closed.
    bool Act() const;

private:
    [[nodiscard]] bool hasState(int state) const;
    [[nodiscard]] QVariantList Call(const QString &interface, const QString &method,
                                    const QVariantList &arguments = QVariantList()) const;

    QString Service;
    QString Path;
};

/// A D-Bus session with the bus of assistive technology, and a screen reader on it. Programs that this
/// process starts find it. It ends with the object; make it when there is a display.
class ScreenReader : public QObject
{
    Q_OBJECT

public:
    ScreenReader();
    ~ScreenReader() override;
    Q_DISABLE_COPY_MOVE(ScreenReader)

    /// Empty when all runs, else what is missing.
    [[nodiscard]] QString error() const { return Error; }
    /// The program as it has made itself known; null until then.
    [[nodiscard]] static Accessible program(qint64 processId);

    /// What programs have told since the last Forget(), while this process ran its event loop: the kinds of
    /// all events, the names that have changed, and what is to be said at once (which Qt knows from 6.8 on).
    [[nodiscard]] QStringList events() const { return Events; }
    [[nodiscard]] QStringList changedNames() const { return ChangedNames; }
    [[nodiscard]] QStringList announcements() const { return Announcements; }
    void Forget();

private slots:
    void Hear(const QDBusMessage &event);

private:
    QProcess Bus;
    QString Error;
    QStringList Events;
    QStringList ChangedNames;
    QStringList Announcements;
};

} // namespace tests
