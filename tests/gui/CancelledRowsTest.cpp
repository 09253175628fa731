// What rows with a default box show after Cancel Changes.

#include "settings/Catalogue.h"
#include "settings/views/Quillet.h"
#include "support/gui/QuilletFixture.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class CancelledRows : public QuilletFixture, public testing::WithParamInterface<int> {
protected:
    static const SettingRow &setting() { return *findSetting(GetParam()); }

    void putValues()
    {
        putFile(u"com.apple.dock.plist"_s,
                u"<key>tilesize</key><integer>48</integer>"
                "<key>largesize</key><integer>64</integer>"_s);
        putFile(u"com.apple.Safari.plist"_s,
                u"<key>RecentHistoryMenuItemsLimit</key><integer>30</integer>"_s);
        putFile(u"com.apple.screencapture.plist"_s,
                u"<key>name</key><string>Shot</string><key>location</key><string>/tmp</string>"_s);
    }
    [[nodiscard]] SettingValue onDisk()
    {
        return SettingAccess(home.home(), files, finderInfo).read(setting()).value;
    }

    void showItsPage(ModuleId module = setting().module)
    {
        for (int group = 0; group < modules().size(); ++group) {
            if (modules().at(group).id == module)
                clickGroup(group);
        }
    }
    [[nodiscard]] QCheckBox &box() const
    {
        return *row(setting().viewClass).findChild<QCheckBox *>(u"checkBox"_s);
    }
    [[nodiscard]] QWidget &control() const
    {
        const GenericView &view = row(setting().viewClass);
        for (const QString &name : {u"slider"_s, u"stepper"_s, u"textField"_s}) {
            if (auto *found = view.findChild<QWidget *>(name))
                return *found;
        }
        throw std::runtime_error("no control");
    }
    [[nodiscard]] SettingValue shown() const
    {
        if (const auto *slider = qobject_cast<const QAbstractSlider *>(&control()))
            return {slider->value()};
        if (const auto *stepper = qobject_cast<const QSpinBox *>(&control()))
            return {stepper->value()};
        return {0, static_cast<const QLineEdit &>(control()).text()};
    }
    /// Changes the value of the control, which is enabled.
    void edit()
    {
        if (auto *slider = qobject_cast<QAbstractSlider *>(&control()))
            slider->setValue(slider->value() + 7);
        else if (auto *stepper = qobject_cast<QSpinBox *>(&control()))
            stepper->setValue(stepper->value() + 7);
        else
            QTest::keyClicks(&control(), u"x"_s);
    }
    [[nodiscard]] QString note() const
    {
        return row(setting().viewClass).findChild<QLabel *>(u"noteLabel"_s)->text();
    }

    void cancelChanges()
    {
        click(button(u"cancelButton"_s));
        dialogs.answer(FirstButton);
    }

    void expectTheStoredValue(const char *when)
    {
        EXPECT_FALSE(box().isChecked()) << when;
        EXPECT_TRUE(control().isEnabled()) << when;
        for (const QPushButton *chooser : row(setting().viewClass).findChildren<QPushButton *>())
            EXPECT_TRUE(chooser->isEnabled()) << when;
        EXPECT_EQ(shown(), onDisk()) << when;
        EXPECT_EQ(note(), QString()) << when;
    }
    void expectTheDefault(const char *when) const
    {
        EXPECT_TRUE(box().isChecked()) << when;
        EXPECT_FALSE(control().isEnabled()) << when;
        EXPECT_EQ(note(), QString()) << when;
    }
};

/// Those of them whose control is off from the start when the key is missing.
class CancelledNumbers : public CancelledRows { };

std::string settingName(const testing::TestParamInfo<int> &id)
{
    return findSetting(id.param)->viewClass.toStdString();
}

} // namespace

TEST_P(CancelledRows, AfterATickedBoxShowTheValueOnDiskAndTakeEdits)
{
    putValues();
    start();
    showItsPage();
    click(box());
    EXPECT_FALSE(control().isEnabled());
    cancelChanges();
    expectTheStoredValue("cancelled");
    showItsPage();
    expectTheStoredValue("on the page built anew");
    edit();
    EXPECT_EQ(shared.quilletCommands().size(), 1);
}

TEST_P(CancelledRows, AfterABoxTickedAndUntickedShowTheValueOnDisk)
{
    putValues();
    start();
    showItsPage();
    click(box());
    click(box());
    EXPECT_TRUE(note().startsWith(u"pending: "_s)) << "the default still waits";
    cancelChanges();
    expectTheStoredValue("cancelled");
    click(box());
    EXPECT_EQ(shared.quilletCommands().size(), 1) << "the box is as it was read";
}

TEST_P(CancelledRows, AfterAnEditShowTheValueOnDisk)
{
    putValues();
    start();
    showItsPage();
    edit();
    cancelChanges();
    expectTheStoredValue("cancelled");
    edit();
    EXPECT_EQ(shared.quilletCommands().size(), 1);
    click(box());
    cancelChanges();
    expectTheStoredValue("cancelled again");
}

TEST_P(CancelledRows, TheirTickedBoxIsTakenBackWhileAnotherPageIsShown)
{
    putValues();
    start();
    showItsPage();
    click(box());
    showItsPage(ModuleId::General);
    cancelChanges();
    showItsPage();
    expectTheStoredValue("shown again");
}

TEST_P(CancelledNumbers, AfterABoxTurnedOffShowTheDefaultThatIsOnDisk)
{
    start();
    showItsPage();
    click(box());
    EXPECT_TRUE(shared.quilletCommands().isEmpty()) << "nothing new to save";
    edit();
    EXPECT_EQ(shared.quilletCommands().size(), 1);
    cancelChanges();
    expectTheDefault("cancelled");
    showItsPage();
    expectTheDefault("on the page built anew");
}

INSTANTIATE_TEST_SUITE_P(Catalogue, CancelledRows, testing::Values(1003, 1004, 1203, 1400, 1403),
                         settingName);
INSTANTIATE_TEST_SUITE_P(Catalogue, CancelledNumbers, testing::Values(1003, 1004, 1203),
                         settingName);
