// SPDX-License-Identifier: MIT
// The dialog of the alignment tables of all drivers.
#pragma once

#include "alignment_merge/AlignmentRowList.h"

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class QHBoxLayout;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;
struct AlignmentChoice;

/// Shows which alignment tables there are, imports further files by button or drop and saves the tables that
/// the user keeps checked. It only shows and asks: the rules are those of AlignmentRowList and SaveAlignment.
/// It has no parent, so it outlives a hidden main window; closing it never ends the program. GUI thread only.
class QDlgAlignmentCfg : public QDialog
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// Loads nothing and lays out nothing; the first showing does the latter.
    QDlgAlignmentCfg();
    ~QDlgAlignmentCfg() override;

    /// Reads the drivers' files of the recorder's folder in place of all rows. The tree is not filled.
    /// Returns what went wrong, empty when nothing did.
    QString LoadDriverFiles();

    [[nodiscard]] const QList<AlignmentRow> &rows() const { return Rows.rows(); }

public slots:
    /// Goes back to what the drivers' files hold. Files that cannot be read are left out silently.
    void Slot_Button_Reset();
    /// Empties the list; touches no file.
    void Slot_Button_Clear();
    /// Imports the files; asks the user for them when the list is empty.
    void Slot_Button_Import(const QStringList &clstrIniFiles);
    void Slot_Button_Import();
    /// Writes the drivers' files after asking where to.
    void Slot_Button_Save();

protected:
    void showEvent(QShowEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void BuildLayout();
    QHBoxLayout *AddLine();
    template <typename Slot>
    QPushButton *AddButton(QHBoxLayout *line, const QString &text, const QString &toolTip, Slot slot);
    void FillTree();
    void TellCheckMark(const QTreeWidgetItem *item);
    void LimitTreeWidth();
    void ShowWholeTree();
    [[nodiscard]] QList<AlignmentChoice> choices() const;
    [[nodiscard]] QString Save();

    QString Title; // above the tree
    AlignmentRowList Rows;
    QString LastFolder;                // where the file dialog for importing starts
    std::unique_ptr<QTreeWidget> Tree; // shown by the layout; it holds the user's check marks
    QStringList HeaderLabels;
    QList<QHBoxLayout *> Lines; // owned by Outer; nothing reads it
    QVBoxLayout *Outer = nullptr;
};
