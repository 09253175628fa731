#pragma once

#include "settings/SettingRow.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

#include <memory>

class QLabel;

namespace Ui {
class QuilletView;
}

namespace varnel {

class MessageLine;
class Node;
class NodeModel;
class Quillet;
class SettingsColumn;
class TextLink;

/// The page of the hidden settings: the list of modules, the column of settings, the footer.
class QuilletView : public QWidget {
    Q_OBJECT

public:
    QuilletView();
    ~QuilletView() override;

    /// The controller; not owned. Before it is set, selecting a module shows nothing.
    void setParentView(Quillet *controller);

    /// Keeps a copy of the name.
    void setGlobalBackupFileName(const QString &name);
    [[nodiscard]] QString globalBackupFileName() const { return backupFileName; }

    /// Shows the page of the selected module.
    void outlineViewSelectionDidChange();

    /// Selects that row of the list alone.
    void selectMenuRow(int row);
    [[nodiscard]] int selectedMenuRow() const;

    [[nodiscard]] SettingsColumn *mainView() const;
    void scrollToTop();
    /// The Tab key goes through the rows, then to the footer.
    void orderFocus();

    /// Puts the keyboard into the search field.
    void startSearch();
    [[nodiscard]] QString searchText() const;
    /// Says over the column why it is empty, if it is, and leads to the settings that are called
    /// so.
    void showSearchOutcome(bool nothingFound, const QList<const SettingRow *> &called);
    /// Selects the setting's group, and gives its control the keyboard.
    void goToSetting(const SettingRow &row);

    /// The three buttons of the footer, together.
    void setButtonsEnabled(bool enabled);
    /// Says on the Save button how many changes it would save.
    void showChangeCount(qsizetype count);

    /// Marks the groups with changes that are not saved.
    void showPendingGroups(const QSet<ModuleId> &groups);
    /// What came of the last action, in the footer.
    [[nodiscard]] MessageLine &messageLine() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void awakeFromNib();
    void dressControls();
    void connectControls();
    void connectSearch();
    void endSearch();
    void clearSearchText();
    void placeFooter();
    void rememberFocus(QWidget *focused);

    std::unique_ptr<Ui::QuilletView> ui;
    std::shared_ptr<Node> rootNode;
    NodeModel *menu = nullptr;
    QLabel *emptyLabel = nullptr;
    QLabel *calledLabel = nullptr;
    QList<TextLink *> calledLinks;
    Quillet *parentView = nullptr;
    QString backupFileName;
    bool leavingSearch = false;
    QPointer<QWidget> lastControl; ///< of a row, with the focus
};

} // namespace varnel
