// SPDX-License-Identifier: MIT
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"

#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QDialog/AlignmentRowLook.h"
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentSave.h"

#include <QAccessible>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <QVersionNumber>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int HardwareIdColumn = 0;
constexpr int DateColumn = 1;

/// The dialog is as wide as this line, and the tree as high as twenty of them.
const QString LongestLine =
    u"________0x8888888888888888______Aligned to: 8888-88-88 (BBBBBBBBBBBBBBBBBBBBBBBBBBBBBB)____"_s;
constexpr int VisibleLines = 20;

/// Where the drivers' files are read and written.
QString RecorderFolder()
{
    return QTarnvikBasic::GetRecorderFile(QString());
}

/// The paths of the dragged data that look like alignment files: ".ad" anywhere but at the beginning.
QStringList AlignmentFilesIn(const QMimeData &data)
{
    QStringList files;
    const QList<QUrl> urls = data.urls(); // empty without URLs
    for (const QUrl &url : urls) {
        const QString path = url.toLocalFile();
        if (path.lastIndexOf(u".ad"_s) > 0)
            files.append(path);
    }
    return files;
}

/// Accepts alignment files, and only as a copy: a source that hears "moved" may delete its files. False when
/// nothing is taken.
bool AcceptAsCopy(QDropEvent &event)
{
    const bool accepted =
        (event.possibleActions() & Qt::CopyAction) != 0 && !AlignmentFilesIn(*event.mimeData()).isEmpty();
    if (accepted)
        event.setDropAction(Qt::CopyAction);
    event.setAccepted(accepted);
    return accepted;
}

QTreeWidgetItem *NewDriverItem(const QString &driver)
{
    auto *const item = new QTreeWidgetItem({driver, QString()});
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

/// Whether screen readers hear of a check mark only through the line's text: the bridges of Qt 6.8 and later
/// tell them its state, and it would be said twice.
bool TextTellsCheckMark()
{
    static const bool tells = QLibraryInfo::version() < QVersionNumber(6, 8);
    return tells;
}

/// A table's line.
class RowItem : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    [[nodiscard]] QVariant data(int column, int role) const override
    {
        if (role == Qt::AccessibleTextRole && column == HardwareIdColumn && TextTellsCheckMark() &&
            flags().testFlag(Qt::ItemIsUserCheckable)) {
            const bool isChecked = checkState(HardwareIdColumn) == Qt::Checked;
            //: Spoken by screen readers: a table's hardware id and its check mark.
            return (isChecked ? QDlgAlignmentCfg::tr("%1, checked") : QDlgAlignmentCfg::tr("%1, not checked"))
                .arg(text(HardwareIdColumn));
        }
        return QTreeWidgetItem::data(column, role);
    }
};

QTreeWidgetItem *NewRowItem(const AlignmentRow &row)
{
    const AlignmentRowLook look = LookOf(row);
    auto *const item = new RowItem({row.hardwareId, look.Text});
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (look.CheckBox) {
        flags |= Qt::ItemIsUserCheckable;
        item->setCheckState(HardwareIdColumn, *look.CheckBox);
    }
    item->setFlags(flags);
    for (const int column : {HardwareIdColumn, DateColumn}) {
        if (!look.Backdrop)
            break;
        item->setBackground(column, QBrush(*look.Backdrop));
        item->setForeground(column, QBrush(Qt::white));
    }
    return item;
}

/// Draws a coloured row's check box in the row's colour: its mark is white like the row's text, and could not
/// be told from a white box.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->backgroundBrush.style() != Qt::NoBrush)
            option->palette.setBrush(QPalette::Base, option->backgroundBrush);
    }
};

} // namespace

QDlgAlignmentCfg::QDlgAlignmentCfg()
    : Title(tr("Alignment data for SDR:")),
      LastFolder(QStandardPaths::standardLocations(QStandardPaths::DesktopLocation).value(0)),
      Tree(std::make_unique<QTreeWidget>()),
      HeaderLabels({tr("SDR"), tr("Date of alignment")})
{
    // While the main window is hidden this is the last window, and its closing would end the program.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAcceptDrops(true);
    setAccessibleName(Title);
    Tree->setColumnCount(static_cast<int>(std::max<qsizetype>(HeaderLabels.size(), 1)));
    Tree->setHeaderLabels(HeaderLabels);
    Tree->setAccessibleName(Title);
    Tree->setItemDelegate(new RowDelegate(Tree.get()));
    Tree->setUniformRowHeights(true); // spares measuring every row
    Tree->sortByColumn(HardwareIdColumn, Qt::AscendingOrder);
    connect(Tree.get(), &QTreeWidget::itemChanged, this, &QDlgAlignmentCfg::TellCheckMark);
}

// The tree, created without parent, is deleted here, before the layout's other widgets.
QDlgAlignmentCfg::~QDlgAlignmentCfg() = default;

QString QDlgAlignmentCfg::LoadDriverFiles()
{
    Rows.Clear();
    return Rows.LoadFolder(RecorderFolder(), AlignmentDriverFilePattern());
}

void QDlgAlignmentCfg::showEvent(QShowEvent *event)
{
    if (Outer == nullptr) {
        BuildLayout();
        FillTree();
    }
    QDialog::showEvent(event);
    adjustSize();
}

QHBoxLayout *QDlgAlignmentCfg::AddLine()
{
    auto *const line = new QHBoxLayout;
    Outer->addLayout(line);
    Lines.append(line);
    return line;
}

template <typename Slot>
QPushButton *QDlgAlignmentCfg::AddButton(QHBoxLayout *line, const QString &text, const QString &toolTip,
                                         Slot slot)
{
    auto *const button = new QPushButton(text);
    button->setToolTip(toolTip);
    connect(button, &QPushButton::clicked, this, slot);
    line->addWidget(button);
    return button;
}

void QDlgAlignmentCfg::BuildLayout()
{
    Outer = new QVBoxLayout(this);
    QHBoxLayout *line = AddLine();
    auto *const label = new QLabel(Title);
    label->setBuddy(Tree.get()); // screen readers read it for the tree
    line->addWidget(label);
    line->addSpacing(10);

    AddLine()->addWidget(Tree.get());
    const QRect longest = Tree->fontMetrics().boundingRect(LongestLine);
    Tree->setMinimumHeight(VisibleLines * longest.height());
    setMinimumWidth(longest.width() + 40);

    line = AddLine();
    //: Back to what the drivers' files hold.
    AddButton(line, tr("Reset"), tr("Loads default"), &QDlgAlignmentCfg::Slot_Button_Reset);
    AddButton(line, tr("Clear"), tr("Clear full list"), &QDlgAlignmentCfg::Slot_Button_Clear);
    AddButton(line, tr("Import..."), tr("Imports data"), qOverload<>(&QDlgAlignmentCfg::Slot_Button_Import));
    QPushButton *const saveButton =
        AddButton(line, tr("Save..."), tr("Saves data"), &QDlgAlignmentCfg::Slot_Button_Save);
    // Without this the Enter key in the tree would press the first button and drop all imports.
    saveButton->setDefault(true);
    Outer->addSpacing(20);
    //: Closes the dialog, not the program.
    AddButton(AddLine(), tr("Quit"), tr("Closes the dialog box"), &QDialog::reject);

    // The keyboard starts in the tree. The Tab key then follows the lines, as the widgets were added in that
    // order.
    Tree->setFocus();
}

void QDlgAlignmentCfg::FillTree()
{
    Tree->setSortingEnabled(false); // or every single item would be sorted in
    Tree->clear();
    Tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    // A stretched last column has the tree's width, not that of its contents: the tree would grow each time.
    Tree->header()->setStretchLastSection(false);
    LimitTreeWidth();

    Rows.Sort();
    QList<QTreeWidgetItem *> drivers;
    QList<QTreeWidgetItem *> tables; // of the last driver
    for (const AlignmentRow &row : Rows.rows()) {
        if (drivers.isEmpty() || drivers.last()->text(HardwareIdColumn) != row.driver) {
            if (!drivers.isEmpty())
                drivers.last()->addChildren(tables);
            tables.clear();
            drivers.append(NewDriverItem(row.driver));
        }
        tables.append(NewRowItem(row));
    }
    if (!drivers.isEmpty())
        drivers.last()->addChildren(tables);
    Tree->addTopLevelItems(drivers);
    Tree->setSortingEnabled(true); // sorts by the column that the user clicked last
    for (QTreeWidgetItem *const driver : std::as_const(drivers))
        driver->setExpanded(true); // not the tables: a screen reader would say of each that it is expanded
    for (int column = 0; column < Tree->columnCount(); ++column)
        Tree->resizeColumnToContents(column);
    Tree->header()->setStretchLastSection(true);
    ShowWholeTree();
}

void QDlgAlignmentCfg::TellCheckMark(const QTreeWidgetItem *item)
{
    // What the user changes is the current line; whoever works without a screen reader never gets here.
    if (!QAccessible::isActive() || !TextTellsCheckMark() || item != Tree->currentItem())
        return;
    if (QAccessibleInterface *const line = QAccessible::queryAccessibleInterface(Tree.get())->focusChild()) {
        QAccessibleEvent event(line, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void QDlgAlignmentCfg::ShowWholeTree()
{
    // The dialog's own minimum width stands before what its layout needs, which would cut off the tree.
    if (Outer == nullptr)
        return;
    Outer->activate(); // or the lines would answer as before
    resize(std::max(width(), Outer->totalMinimumSize().width()), height());
}

void QDlgAlignmentCfg::LimitTreeWidth()
{
    int width = 10;
    for (int column = 0; column < Tree->columnCount(); ++column)
        width += Tree->columnWidth(column);
    if (const QScreen *const screen = QGuiApplication::primaryScreen())
        width = std::min(width, screen->availableGeometry().width() - 9);
    if (width > 100)
        Tree->setMinimumWidth(width);
}

void QDlgAlignmentCfg::Slot_Button_Reset()
{
    LoadDriverFiles(); // errors are not shown
    FillTree();
}

void QDlgAlignmentCfg::Slot_Button_Clear()
{
    Rows.Clear();
    FillTree();
}

void QDlgAlignmentCfg::Slot_Button_Import(const QStringList &clstrIniFiles)
{
    QStringList files = clstrIniFiles;
    if (files.isEmpty())
        files = QFileDialog::getOpenFileNames(this, tr("Choose alignment file for importing"), LastFolder,
                                              tr("AlignFile (*.ad);;All (*.*)"));
    if (files.isEmpty())
        return;
    LastFolder = QFileInfo(files.first()).absolutePath();
    const QString errors = Rows.ReadFiles(files);
    if (!errors.isEmpty())
        QMessageBox::warning(nullptr, tr("Importing alignment data"),
                             tr("Error while loding:\n%1").arg(errors), QMessageBox::Ok);
    FillTree();
}

void QDlgAlignmentCfg::Slot_Button_Import()
{
    Slot_Button_Import(QStringList());
}

void QDlgAlignmentCfg::Slot_Button_Save()
{
    const QString error = Save();
    if (!error.isEmpty())
        QMessageBox::warning(nullptr, tr("Export alignment data"),
                             tr("Error while exporting:\n%1").arg(error), QMessageBox::Ok);
}

QList<AlignmentChoice> QDlgAlignmentCfg::choices() const
{
    QList<AlignmentChoice> choices;
    for (int i = 0; i < Tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *const driver = Tree->topLevelItem(i);
        for (int j = 0; j < driver->childCount(); ++j) {
            const QTreeWidgetItem *const table = driver->child(j);
            choices.append({driver->text(HardwareIdColumn), table->text(HardwareIdColumn),
                            table->checkState(HardwareIdColumn) == Qt::Checked});
        }
    }
    return choices;
}

QString QDlgAlignmentCfg::Save()
{
    AlignmentSaveQuestions questions;
    questions.SaveUnchanged = [](const QString &driver) {
        return QMessageBox::information(
                   nullptr, tr("Update %1 alignment.").arg(driver),
                   tr("No changes for the %1 driver.\nDo you still want to save?").arg(driver),
                   QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
    };
    questions.FileToWrite = [this](const QString &proposal) {
        return QFileDialog::getSaveFileName(this, tr("Choose alignment file for exporting"), proposal,
                                            tr("AlignFile (*.ad);;All (*.*)"));
    };
    return SaveAlignment(MarkRowsAndCollectSaveGroups(choices(), Rows, RecorderFolder()), questions);
}

void QDlgAlignmentCfg::dragEnterEvent(QDragEnterEvent *event)
{
    AcceptAsCopy(*event);
}

void QDlgAlignmentCfg::dropEvent(QDropEvent *event)
{
    if (!AcceptAsCopy(*event))
        return;
    const QStringList files = AlignmentFilesIn(*event->mimeData());
    // The program that they come from waits for the end of the drop, not for our message box.
    QMetaObject::invokeMethod(
        this, [this, files] { Slot_Button_Import(files); }, Qt::QueuedConnection);
}
