// Every setting of the catalogue, edited through its control on its page.

#include "settings/SettingAccess.h"
#include "support/gui/QuilletFixture.h"
#include "support/gui/ReportRecorder.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class EverySetting : public QuilletFixture, public testing::WithParamInterface<int> {
protected:
    static const SettingRow &setting() { return catalogue().at(GetParam()); }

    /// The setting's own list, among those of its view.
    QComboBox &list() const
    {
        const QList<QComboBox *> lists = row(setting().viewClass).findChildren<QComboBox *>();
        const QList<const SettingRow *> settings = rowsOfView(setting().viewClass);
        return *lists.at(settings.indexOf(&setting()));
    }

    /// Edits the setting away from its default, as a user does, and gives the value.
    SettingValue edit() const
    {
        GenericView &view = row(setting().viewClass);
        switch (setting().control) {
        case ControlKind::ComboBox: {
            // Not the choice that a home without any preferences shows.
            const int index = list().currentIndex() == 0 ? 1 : 0;
            choose(list(), index);
            return {index};
        }
        case ControlKind::Slider:
            click(*view.findChild<QCheckBox *>(u"checkBox"_s));
            QTest::keyClick(view.findChild<QAbstractSlider *>(u"slider"_s), Qt::Key_Right);
            return {setting().minimum + 1};
        case ControlKind::Stepper:
            click(*view.findChild<QCheckBox *>(u"checkBox"_s));
            QTest::keyClick(view.findChild<QSpinBox *>(u"stepper"_s), Qt::Key_Down);
            return {setting().shownWhenMissing - 1};
        case ControlKind::TextField:
        case ControlKind::FolderField:
            QTest::keyClicks(view.findChild<QLineEdit *>(u"textField"_s), u"a'b"_s);
            return {0, u"a'b"_s};
        case ControlKind::CheckBoxes:
            click(*view.findChild<QCheckBox *>(u"defaultCheckBox"_s));
            click(*view.findChild<QCheckBox *>(u"bonjourCheckBox"_s));
            return {0, u"0;0;0;1"_s};
        }
        return {};
    }

    void showItsPage()
    {
        const QList<ModuleRow> &groups = modules();
        for (int group = 0; group < groups.size(); ++group) {
            if (groups.at(group).id == setting().module)
                clickGroup(group);
        }
    }

    /// What a home without preferences backs up.
    SettingValue oldValue() const
    {
        if (setting().mechanism == Mechanism::LibraryFolder)
            return {1};
        switch (setting().kind) {
        case ValueKind::Choice:
            return {setting().defaultIndex()};
        case ValueKind::Number:
            return {-1};
        case ValueKind::String:
            return {0, u"-1"_s};
        }
        return {};
    }

    ChangeRecord record(const SettingValue &value) const
    {
        return {setting().id, value.number, value.text};
    }

    ReportRecorder recorder;
};

std::string settingName(const testing::TestParamInfo<int> &place)
{
    const SettingRow &row = catalogue().at(place.param);
    return QString(row.viewClass + QString::number(row.id)).remove(u'_').toStdString();
}

} // namespace

TEST_P(EverySetting, ReportsItsOldValueFirstAndThenTheNewOne)
{
    start();
    showItsPage();
    row(setting().viewClass).setParentView(&recorder);
    const SettingValue value = edit();
    ASSERT_GE(recorder.reports.size(), 3);
    using Report = ReportRecorder::Report;
    const SettingValue old = oldValue();
    EXPECT_EQ(recorder.reports.first(),
              (Report {ReportRecorder::Backup, setting().id, old.number, old.text}));
    EXPECT_EQ(recorder.reports.at(recorder.reports.size() - 2),
              (Report {ReportRecorder::Change, setting().id, value.number, value.text}));
    EXPECT_EQ(recorder.reports.last(), Report {ReportRecorder::Enable});
    for (const Report &report : std::as_const(recorder.reports)) {
        if (report.kind == ReportRecorder::Backup) {
            EXPECT_EQ(report, recorder.reports.first()) << "always the value on disk";
        }
    }
}

TEST_P(EverySetting, ReportsNothingWhileItsPageIsBuiltOrRead)
{
    start();
    showItsPage();
    showItsPage();
    controller->readData();
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(shared.quilletBackupCommands().isEmpty());
}

TEST_P(EverySetting, IsOnDiskAfterASaveAsTheUserChoseIt)
{
    // The one setting that only edits a file that is there.
    putFile(u"com.apple.Safari.plist"_s,
            u"<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key><dict/>"_s);
    start();
    showItsPage();
    const SettingValue value = edit();
    EXPECT_EQ(shared.quilletCommands(), QList<ChangeRecord>({record(value)}));
    EXPECT_EQ(shared.quilletBackupCommands(), QList<ChangeRecord>({record(oldValue())}));
    click(button(u"saveButton"_s));
    const SettingAccess access(home.home(), files, finderInfo);
    EXPECT_EQ(access.read(setting()).value, value);
    EXPECT_TRUE(QFile::exists(shared.backupFileName()));
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EverySetting, testing::Range(0, 50), settingName);
