#include "cli/Varnelctl.h"

#include <QDir>
#include <QProcessEnvironment>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace varnel::test;
using namespace testing;

namespace {

/// One run whose whole output is kept in tests/data/cli.
struct Golden {
    const char16_t *file;
    QStringList arguments;
    int status = 0;
};

void PrintTo(const Golden &golden, std::ostream *out)
{
    *out << QString::fromUtf16(golden.file).toStdString();
}

const QList<Golden> goldens {
    {u"help.txt", {u"--help"_qs}},
    {u"help-list.txt", {u"list"_qs, u"--help"_qs}},
    {u"help-show.txt", {u"show"_qs, u"--help"_qs}},
    {u"help-get.txt", {u"get"_qs, u"--help"_qs}},
    {u"help-set.txt", {u"set"_qs, u"--help"_qs}},
    {u"help-reset.txt", {u"delete"_qs, u"--help"_qs}},
    {u"help-end.txt", {u"end"_qs, u"--help"_qs}},
    {u"help-search.txt", {u"search"_qs, u"--help"_qs}},
    {u"help-login-items.txt", {u"login-items"_qs, u"--help"_qs}},
    {u"help-login-items-list.txt", {u"login-items"_qs, u"list"_qs, u"--help"_qs}},
    {u"help-login-items-add.txt", {u"login-items"_qs, u"add"_qs, u"--help"_qs}},
    {u"help-login-items-remove.txt", {u"login-items"_qs, u"remove"_qs, u"--help"_qs}},
    {u"help-login-items-enable.txt", {u"login-items"_qs, u"enable"_qs, u"--help"_qs}},
    {u"help-login-items-disable.txt", {u"login-items"_qs, u"disable"_qs, u"--help"_qs}},
    {u"help-backups.txt", {u"backups"_qs, u"--help"_qs}},
    {u"help-backups-list.txt", {u"backups"_qs, u"list"_qs, u"--help"_qs}},
    {u"help-backups-show.txt", {u"backups"_qs, u"show"_qs, u"--help"_qs}},
    {u"help-backups-restore.txt", {u"backups"_qs, u"restore"_qs, u"--help"_qs}},
    {u"help-backups-delete.txt", {u"backups"_qs, u"delete"_qs, u"--help"_qs}},
    {u"help-completion.txt", {u"completion"_qs, u"--help"_qs}},
    {u"list.txt", {u"list"_qs}},
    {u"list-safari.txt", {u"list"_qs, u"safari"_qs}},
    {u"list-general.json", {u"list"_qs, u"General"_qs, u"--json"_qs}},
    {u"show-choice.txt", {u"show"_qs, u"minimize-into-icon"_qs}},
    {u"show-choice.json", {u"show"_qs, u"1008"_qs, u"--json"_qs}},
    {u"show-number.txt", {u"show"_qs, u"1004"_qs}},
    {u"show-number.json", {u"show"_qs, u"1203"_qs, u"--json"_qs}},
    {u"show-items.txt", {u"show"_qs, u"1200"_qs}},
    {u"show-items.json", {u"show"_qs, u"1200"_qs, u"--json"_qs}},
    {u"show-text.json", {u"show"_qs, u"1403"_qs, u"--json"_qs}},
    {u"show-folder.txt", {u"show"_qs, u"1302"_qs}},
    {u"show-folder.json", {u"show"_qs, u"1302"_qs, u"--json"_qs}},
    {u"show-twokeys.json", {u"show"_qs, u"1602"_qs, u"--json"_qs}},
    {u"show-unsearchable.json", {u"show"_qs, u"1804"_qs, u"--json"_qs}},
    {u"get.txt", {u"get"_qs, u"1300"_qs}},
    {u"get.json", {u"get"_qs, u"1300"_qs, u"--json"_qs}},
    {u"get-key.txt", {u"read"_qs, u"-g"_qs, u"AppleShowScrollBars"_qs}},
    {u"get-key.json", {u"read"_qs, u"com.apple.dock"_qs, u"autohide"_qs, u"--json"_qs}},
    {u"get-key-list.txt", {u"read"_qs, u"com.apple.safari"_qs, u"ProxiesInBookmarksBar"_qs}},
    {u"get-key-missing.json", {u"read"_qs, u"com.apple.dock"_qs, u"no-glass"_qs, u"--json"_qs}, 1},
    {u"search.txt", {u"search"_qs, u"animation"_qs}},
    {u"search.json", {u"search"_qs, u"Lock Size"_qs, u"--json"_qs}},
    {u"search-nothing.txt", {u"search"_qs, u"reading list"_qs}, 1},
    {u"search-nothing.json", {u"search"_qs, u"reading list"_qs, u"--json"_qs}, 1},
    {u"set.txt",
     {u"set"_qs, u"minimize-effect=Scale effect"_qs, u"dock-size=64"_qs, u"1304=yes"_qs,
      u"1200=0;1;0;1"_qs, u"1400=画像"_qs}},
    {u"set.json",
     {u"set"_qs, u"minimize-effect=Scale effect"_qs, u"dock-size=-1"_qs, u"1304=yes"_qs,
      u"1200=0;1;0;1"_qs, u"1400=画像"_qs, u"--json"_qs}},
    {u"set-nothing.txt", {u"set"_qs, u"dock-size=48"_qs}},
    {u"set-nothing.json", {u"set"_qs, u"dock-size=48"_qs, u"--json"_qs}},
    {u"set-dry.txt",
     {u"set"_qs, u"minimize-effect=Scale effect"_qs, u"dock-size=64"_qs, u"1304=yes"_qs,
      u"--dry-run"_qs, u"--end"_qs}},
    {u"set-dry.json",
     {u"set"_qs, u"minimize-effect=Scale effect"_qs, u"dock-size=64"_qs, u"--dry-run"_qs,
      u"--end"_qs, u"--json"_qs}},
    {u"set-key.json",
     {u"write"_qs, u"com.apple.dock"_qs, u"autohide"_qs, u"-bool"_qs, u"true"_qs, u"--json"_qs}},
    {u"reset.txt", {u"reset"_qs, u"dock-size"_qs, u"1300"_qs, u"1301"_qs, u"dock-style"_qs}},
    {u"reset.json", {u"reset"_qs, u"--group"_qs, u"Safari"_qs, u"--json"_qs}},
    {u"reset-nothing.txt", {u"reset"_qs, u"--group"_qs, u"Mail"_qs}},
    {u"reset-dry.txt", {u"reset"_qs, u"--group"_qs, u"Dock"_qs, u"--dry-run"_qs}},
    {u"help-diff.txt", {u"diff"_qs, u"--help"_qs}},
    {u"help-apply.txt", {u"apply"_qs, u"--help"_qs}},
    {u"help-export.txt", {u"export"_qs, u"--help"_qs}},
    {u"diff.txt", {u"diff"_qs, u"PROFILE"_qs}, 1},
    {u"diff.json", {u"diff"_qs, u"PROFILE"_qs, u"--json"_qs}, 1},
    {u"diff-nothing.txt", {u"diff"_qs, u"NOTHING"_qs}},
    {u"diff-nothing.json", {u"diff"_qs, u"NOTHING"_qs, u"--json"_qs}},
    {u"apply.txt", {u"apply"_qs, u"PROFILE"_qs}},
    {u"apply.json", {u"apply"_qs, u"PROFILE"_qs, u"--json"_qs}},
    {u"apply-dry.json", {u"apply"_qs, u"PROFILE"_qs, u"--dry-run"_qs, u"--json"_qs}},
    {u"apply-nothing.txt", {u"apply"_qs, u"NOTHING"_qs}},
    {u"apply-nothing.json", {u"apply"_qs, u"NOTHING"_qs, u"--json"_qs}},
    {u"export.json", {u"export"_qs}},
    {u"export-all.json", {u"export"_qs, u"--all"_qs, u"--json"_qs}},
    {u"export-plist.txt", {u"export"_qs, u"--format"_qs, u"plist"_qs}},
    {u"export-defaults.txt", {u"export"_qs, u"--format"_qs, u"defaults"_qs}},
    {u"export-defaults-all.txt", {u"export"_qs, u"--format"_qs, u"defaults"_qs, u"--all"_qs}},
    {u"export-forced.txt", {u"export"_qs, u"--format"_qs, u"mobileconfig"_qs}},
    {u"export-set-once.txt",
     {u"export"_qs, u"--format"_qs, u"mobileconfig"_qs, u"--set-once"_qs, u"--group"_qs,
      u"Dock"_qs}},
    {u"login-items-list.txt", {u"login-items"_qs, u"list"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-list.json",
     {u"login-items"_qs, u"list"_qs, u"--json"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-add.txt",
     {u"login-items"_qs, u"add"_qs, u"/Applications/Chess.app"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-add-dry.txt",
     {u"login-items"_qs, u"add"_qs, u"/Applications/Chess.app"_qs, u"--dry-run"_qs, u"--home"_qs,
      u"HOME"_qs}},
    {u"login-items-add-dry.json",
     {u"login-items"_qs, u"add"_qs, u"/Applications/Chess.app"_qs, u"--dry-run"_qs, u"--json"_qs,
      u"--home"_qs, u"HOME"_qs}},
    {u"login-items-disable.txt",
     {u"login-items"_qs, u"disable"_qs, u"/Applications/Mail.app"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-disable.json",
     {u"login-items"_qs, u"disable"_qs, u"/Applications/Mail.app"_qs, u"--json"_qs, u"--home"_qs,
      u"HOME"_qs}},
    {u"login-items-add.json",
     {u"login-items"_qs, u"add"_qs, u"/Applications/Chess.app"_qs, u"--json"_qs, u"--home"_qs,
      u"HOME"_qs}},
    {u"login-items-remove.txt",
     {u"login-items"_qs, u"remove"_qs, u"/Applications/Mail.app"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-remove.json",
     {u"login-items"_qs, u"remove"_qs, u"/Applications/Mail.app"_qs, u"--json"_qs, u"--home"_qs,
      u"HOME"_qs}},
    {u"login-items-enable.txt",
     {u"login-items"_qs, u"enable"_qs, u"/Applications/Mail.app"_qs, u"--home"_qs, u"HOME"_qs}},
    {u"login-items-enable.json",
     {u"login-items"_qs, u"enable"_qs, u"/Applications/Mail.app"_qs, u"--json"_qs, u"--home"_qs,
      u"HOME"_qs}},
    {u"backups-list.txt", {u"backups"_qs, u"list"_qs}},
    {u"backups-list.json", {u"backups"_qs, u"list"_qs, u"--json"_qs}},
    {u"backups-show.txt", {u"backups"_qs, u"show"_qs, u"quillet1.sqlite"_qs}},
    {u"backups-show.json", {u"backups"_qs, u"show"_qs, u"quillet1.sqlite"_qs, u"--json"_qs}},
    {u"backups-restore.txt", {u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs}},
    {u"backups-restore.json", {u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs, u"--json"_qs}},
    {u"backups-restore-dry.txt",
     {u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs, u"--dry-run"_qs}},
    {u"backups-delete.txt", {u"backups"_qs, u"delete"_qs, u"quillet1.sqlite"_qs}},
    {u"backups-delete.json", {u"backups"_qs, u"delete"_qs, u"quillet1.sqlite"_qs, u"--json"_qs}},
    {u"completion-bash.txt", {u"completion"_qs, u"bash"_qs}},
    {u"completion-zsh.txt", {u"completion"_qs, u"zsh"_qs}},
    {u"completion-fish.txt", {u"completion"_qs, u"fish"_qs}},
    {u"completion-fish.json", {u"completion"_qs, u"fish"_qs, u"--json"_qs}},
    {u"help-processes.txt", {u"processes"_qs, u"--help"_qs}},
    {u"help-system.txt", {u"system"_qs, u"--help"_qs}},
};

void installLoginItems(const TemporaryHome &home)
{
    const QString folder = home.path() + u"/.config/autostart/";
    QDir().mkpath(folder);
    writeFile(folder + u"mail.desktop",
              "[Desktop Entry]\nType=Application\nName=Mail\n"
              "Exec=/Applications/Mail.app/Contents/MacOS/Mail\n");
    writeFile(folder + u"notes.desktop",
              "[Desktop Entry]\nType=Application\nName=Notes \xe2\x80\x93 \xe7\x94\xbb\n"
              "Exec=/opt/notes/bin/notes\n");
}

/// Rows as a save writes them, by the database's own tool.
void installBackup(const TemporaryHome &home)
{
    const QString folder = home.path() + u"/Library/Application Support/Varnel/Backup";
    QDir().mkpath(folder);
    const QString rows =
        u"CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT);"
        u"INSERT INTO users VALUES(1008,'0','','');INSERT INTO users VALUES(1004,'32','','');"
        u"INSERT INTO users VALUES(1400,'','Größe','');INSERT INTO users VALUES(9999,'1','','');"_qs;
    const Outcome made = runProgram(u"sqlite3"_qs, {folder + u"/quillet1.sqlite", rows},
                                    QProcessEnvironment::systemEnvironment());
    ASSERT_EQ(made.status, 0) << made.err.toStdString();
}

/// When a file was made differs from run to run.
QByteArray withoutDates(const QByteArray &output)
{
    static const QRegularExpression date(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\+0000"_qs);
    return QString::fromUtf8(output).replace(date, u"DATE"_qs).toUtf8();
}

class GoldenTest : public TestWithParam<std::tuple<Golden, std::string, std::string>> { };

TEST_P(GoldenTest, theOutputStaysAsItIsWhateverTheFormatAndTheLocale)
{
    const auto &[golden, format, locale] = GetParam();
    TemporaryHome home;
    installSamples(home, QString::fromStdString(format));
    Varnelctl varnelctl(home);
    varnelctl.environment.insert(u"LC_ALL"_qs, QString::fromStdString(locale));

    installLoginItems(home);
    if (golden.arguments.first() == u"backups")
        installBackup(home);
    QStringList arguments = golden.arguments;
    arguments.replaceInStrings(QRegularExpression(u"^HOME$"_qs), home.path());
    const QString profiles = QStringLiteral(TEST_DATA) + u"/profiles/";
    arguments.replaceInStrings(u"PROFILE"_qs, profiles + u"lab.json");
    arguments.replaceInStrings(u"NOTHING"_qs, profiles + u"nothing.plist");
    varnelctl.environment.insert(u"SOURCE_DATE_EPOCH"_qs, u"1321876800"_qs);
    const Outcome outcome = varnelctl.run(arguments);
    EXPECT_EQ(outcome.status, golden.status) << outcome.err.toStdString();
    expectGolden(QString::fromUtf16(golden.file), withoutDates(outcome.out), home);
}

// The comma locale need not be installed: the toolkit goes by its name.
INSTANTIATE_TEST_SUITE_P(Output, GoldenTest,
                         Combine(ValuesIn(goldens), Values("binary", "xml"),
                                 Values("C.UTF-8", "de_DE.UTF-8")),
                         [](const auto &values) {
                             QString name = QString::fromUtf16(std::get<0>(values.param).file)
                                 + u'_' + QString::fromStdString(std::get<1>(values.param)) + u'_'
                                 + QString::fromStdString(std::get<2>(values.param)).left(1);
                             return name.replace(u'.', u'_').remove(u'-').toStdString();
                         });

} // namespace
