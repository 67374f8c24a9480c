// SPDX-License-Identifier: MIT
#include "tests/support/ShownTexts.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QTextEdit>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

constexpr const char *TextProperties[] = {"windowTitle",     "text",        "title",
                                          "toolTip",         "statusTip",   "whatsThis",
                                          "accessibleName",  "iconText",    "accessibleDescription",
                                          "placeholderText", "prefix",      "suffix",
                                          "informativeText", "detailedText"};

void AddProperties(const QObject &object, QStringList &texts)
{
    const bool typedIn = qobject_cast<const QLineEdit *>(&object) != nullptr;
    for (const char *property : TextProperties) {
        const QString text = object.property(property).toString();
        if (!text.isEmpty() && !(typedIn && qstrcmp(property, "text") == 0))
            texts.append(text);
    }
}

void AddHeader(const QHeaderView &header, QStringList &texts)
{
    if (header.model() == nullptr)
        return;
    for (int section = 0; section < header.count(); ++section)
        texts.append(header.model()->headerData(section, header.orientation()).toString());
}

void AddItems(const QTreeWidgetItem &item, QStringList &texts)
{
    for (int column = 0; column < item.columnCount(); ++column)
        texts.append(item.text(column));
    for (int child = 0; child < item.childCount(); ++child)
        AddItems(*item.child(child), texts);
}

void AddWidget(const QWidget &widget, QStringList &texts)
{
    AddProperties(widget, texts);
    const QList<QAction *> actions = widget.actions();
    for (const QAction *action : actions)
        AddProperties(*action, texts);
    if (const auto *const list = qobject_cast<const QComboBox *>(&widget)) {
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->itemText(i));
    } else if (const auto *const header = qobject_cast<const QHeaderView *>(&widget)) {
        AddHeader(*header, texts);
    } else if (const auto *const tree = qobject_cast<const QTreeWidget *>(&widget)) {
        AddItems(*tree->invisibleRootItem(), texts);
    }
}

/// Collects what answers to which letter.
class Mnemonics
{
public:
    void add(const QString &text)
    {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty())
            TextsByKey[key.toString()].append(text);
    }
    void addCollisionsTo(QStringList &collisions) const
    {
        for (const QStringList &texts : TextsByKey) {
            if (texts.size() > 1)
                collisions.append(texts.join(u" / "_s));
        }
    }

private:
    QMap<QString, QStringList> TextsByKey;
};

void AddCollisionsOfEntries(const QWidget &menu, QStringList &collisions)
{
    Mnemonics mnemonics;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        mnemonics.add(action->text());
    mnemonics.addCollisionsTo(collisions);
}

} // namespace

QStringList ShownTexts(const QWidget &window)
{
    QStringList texts;
    AddWidget(window, texts);
    const QList<QWidget *> children = window.findChildren<QWidget *>();
    for (const QWidget *child : children)
        AddWidget(*child, texts);
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

QStringList ShownShortcuts(const QMenu &menu)
{
    QStringList shortcuts;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        if (!action->shortcut().isEmpty())
            shortcuts.append(action->shortcut().toString(QKeySequence::NativeText));
    }
    return shortcuts;
}

QStringList MnemonicCollisions(const QWidget &window)
{
    QStringList collisions;
    Mnemonics dialog;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (qobject_cast<const QMenu *>(widget) || qobject_cast<const QMenuBar *>(widget)) {
            AddCollisionsOfEntries(*widget, collisions);
        } else if (const auto *const button = qobject_cast<const QAbstractButton *>(widget)) {
            if (button->isVisibleTo(&window))
                dialog.add(button->text());
        } else if (const auto *const label = qobject_cast<const QLabel *>(widget)) {
            if (label->buddy() != nullptr && label->isVisibleTo(&window))
                dialog.add(label->text());
        }
    }
    if (qobject_cast<const QMenu *>(&window))
        AddCollisionsOfEntries(window, collisions);
    dialog.addCollisionsTo(collisions);
    return collisions;
}

QStringList CutOffTexts(const QWidget &window)
{
    QStringList texts;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const auto *const label = qobject_cast<const QLabel *>(widget);
        if (!qobject_cast<const QAbstractButton *>(widget) && label == nullptr)
            continue;
        const bool wraps = label != nullptr && label->wordWrap();
        const int room = wraps ? widget->height() : widget->width();
        const int need = wraps ? widget->heightForWidth(widget->width()) : widget->sizeHint().width();
        const QString text = widget->property("text").toString();
        if (!text.isEmpty() && widget->isVisibleTo(&window) && room < need)
            texts.append(text);
    }
    return texts;
}

} // namespace tests
