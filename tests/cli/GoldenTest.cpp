#include "cli/Varnelctl.h"

#include <QDir>
#include <QProcessEnvironment>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
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
    {u"help.txt", {u"--help"_s}},
    {u"help-list.txt", {u"list"_s, u"--help"_s}},
    {u"help-show.txt", {u"show"_s, u"--help"_s}},
    {u"help-get.txt", {u"get"_s, u"--help"_s}},
    {u"help-set.txt", {u"set"_s, u"--help"_s}},
    {u"help-reset.txt", {u"delete"_s, u"--help"_s}},
    {u"help-end.txt", {u"end"_s, u"--help"_s}},
    {u"help-search.txt", {u"search"_s, u"--help"_s}},
    {u"help-doctor.txt", {u"doctor"_s, u"--help"_s}},
    {u"help-login-items.txt", {u"login-items"_s, u"--help"_s}},
    {u"help-login-items-list.txt", {u"login-items"_s, u"list"_s, u"--help"_s}},
    {u"help-login-items-add.txt", {u"login-items"_s, u"add"_s, u"--help"_s}},
    {u"help-login-items-remove.txt", {u"login-items"_s, u"remove"_s, u"--help"_s}},
    {u"help-login-items-enable.txt", {u"login-items"_s, u"enable"_s, u"--help"_s}},
    {u"help-login-items-disable.txt", {u"login-items"_s, u"disable"_s, u"--help"_s}},
    {u"help-backups.txt", {u"backups"_s, u"--help"_s}},
    {u"help-backups-list.txt", {u"backups"_s, u"list"_s, u"--help"_s}},
    {u"help-backups-show.txt", {u"backups"_s, u"show"_s, u"--help"_s}},
    {u"help-backups-restore.txt", {u"backups"_s, u"restore"_s, u"--help"_s}},
    {u"help-backups-delete.txt", {u"backups"_s, u"delete"_s, u"--help"_s}},
    {u"help-completion.txt", {u"completion"_s, u"--help"_s}},
    {u"list.txt", {u"list"_s}},
    {u"list-safari.txt", {u"list"_s, u"safari"_s}},
    {u"list-general.json", {u"list"_s, u"General"_s, u"--json"_s}},
    {u"show-choice.txt", {u"show"_s, u"minimize-into-icon"_s}},
    {u"show-choice.json", {u"show"_s, u"1008"_s, u"--json"_s}},
    {u"show-number.txt", {u"show"_s, u"1004"_s}},
    {u"show-number.json", {u"show"_s, u"1203"_s, u"--json"_s}},
    {u"show-items.txt", {u"show"_s, u"1200"_s}},
    {u"show-items.json", {u"show"_s, u"1200"_s, u"--json"_s}},
    {u"show-text.json", {u"show"_s, u"1403"_s, u"--json"_s}},
    {u"show-folder.txt", {u"show"_s, u"1302"_s}},
    {u"show-folder.json", {u"show"_s, u"1302"_s, u"--json"_s}},
    {u"show-twokeys.json", {u"show"_s, u"1602"_s, u"--json"_s}},
    {u"show-unsearchable.json", {u"show"_s, u"1804"_s, u"--json"_s}},
    {u"get.txt", {u"get"_s, u"1300"_s}},
    {u"get.json", {u"get"_s, u"1300"_s, u"--json"_s}},
    {u"get-key.txt", {u"read"_s, u"-g"_s, u"AppleShowScrollBars"_s}},
    {u"get-key.json", {u"read"_s, u"com.apple.dock"_s, u"autohide"_s, u"--json"_s}},
    {u"get-key-list.txt", {u"read"_s, u"com.apple.safari"_s, u"ProxiesInBookmarksBar"_s}},
    {u"get-key-missing.json", {u"read"_s, u"com.apple.dock"_s, u"no-glass"_s, u"--json"_s}, 1},
    {u"search.txt", {u"search"_s, u"animation"_s}},
    {u"search.json", {u"search"_s, u"Lock Size"_s, u"--json"_s}},
    {u"search-nothing.txt", {u"search"_s, u"reading list"_s}, 1},
    {u"search-nothing.json", {u"search"_s, u"reading list"_s, u"--json"_s}, 1},
    {u"set.txt",
     {u"set"_s, u"minimize-effect=Scale effect"_s, u"dock-size=64"_s, u"1304=yes"_s,
      u"1200=0;1;0;1"_s, u"1400=画像"_s}},
    {u"set.json",
     {u"set"_s, u"minimize-effect=Scale effect"_s, u"dock-size=-1"_s, u"1304=yes"_s,
      u"1200=0;1;0;1"_s, u"1400=画像"_s, u"--json"_s}},
    {u"set-nothing.txt", {u"set"_s, u"dock-size=48"_s}},
    {u"set-nothing.json", {u"set"_s, u"dock-size=48"_s, u"--json"_s}},
    {u"set-dry.txt",
     {u"set"_s, u"minimize-effect=Scale effect"_s, u"dock-size=64"_s, u"1304=yes"_s, u"--dry-run"_s,
      u"--end"_s}},
    {u"set-dry.json",
     {u"set"_s, u"minimize-effect=Scale effect"_s, u"dock-size=64"_s, u"--dry-run"_s, u"--end"_s,
      u"--json"_s}},
    {u"set-key.json",
     {u"write"_s, u"com.apple.dock"_s, u"autohide"_s, u"-bool"_s, u"true"_s, u"--json"_s}},
    {u"reset.txt", {u"reset"_s, u"dock-size"_s, u"1300"_s, u"1301"_s, u"dock-style"_s}},
    {u"reset.json", {u"reset"_s, u"--group"_s, u"Safari"_s, u"--json"_s}},
    {u"reset-nothing.txt", {u"reset"_s, u"--group"_s, u"Mail"_s}},
    {u"reset-dry.txt", {u"reset"_s, u"--group"_s, u"Dock"_s, u"--dry-run"_s}},
    {u"help-diff.txt", {u"diff"_s, u"--help"_s}},
    {u"help-apply.txt", {u"apply"_s, u"--help"_s}},
    {u"help-export.txt", {u"export"_s, u"--help"_s}},
    {u"diff.txt", {u"diff"_s, u"PROFILE"_s}, 1},
    {u"diff.json", {u"diff"_s, u"PROFILE"_s, u"--json"_s}, 1},
    {u"diff-nothing.txt", {u"diff"_s, u"NOTHING"_s}},
    {u"diff-nothing.json", {u"diff"_s, u"NOTHING"_s, u"--json"_s}},
    {u"apply.txt", {u"apply"_s, u"PROFILE"_s}},
    {u"apply.json", {u"apply"_s, u"PROFILE"_s, u"--json"_s}},
    {u"apply-dry.json", {u"apply"_s, u"PROFILE"_s, u"--dry-run"_s, u"--json"_s}},
    {u"apply-nothing.txt", {u"apply"_s, u"NOTHING"_s}},
    {u"apply-nothing.json", {u"apply"_s, u"NOTHING"_s, u"--json"_s}},
    {u"export.json", {u"export"_s}},
    {u"export-all.json", {u"export"_s, u"--all"_s, u"--json"_s}},
    {u"export-plist.txt", {u"export"_s, u"--format"_s, u"plist"_s}},
    {u"export-defaults.txt", {u"export"_s, u"--format"_s, u"defaults"_s}},
    {u"export-defaults-all.txt", {u"export"_s, u"--format"_s, u"defaults"_s, u"--all"_s}},
    {u"export-forced.txt", {u"export"_s, u"--format"_s, u"mobileconfig"_s}},
    {u"export-set-once.txt",
     {u"export"_s, u"--format"_s, u"mobileconfig"_s, u"--set-once"_s, u"--group"_s, u"Dock"_s}},
    {u"login-items-list.txt", {u"login-items"_s, u"list"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-list.json", {u"login-items"_s, u"list"_s, u"--json"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-list-account.txt",
     {u"login-items"_s, u"list"_s, u"--list"_s, u"account"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-list-account.json",
     {u"login-items"_s, u"list"_s, u"--list=account"_s, u"--json"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-add-account.txt",
     {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--list"_s, u"account"_s,
      u"--home"_s, u"HOME"_s}},
    {u"login-items-add.txt",
     {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-add-dry.txt",
     {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--dry-run"_s, u"--home"_s,
      u"HOME"_s}},
    {u"login-items-add-dry.json",
     {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--dry-run"_s, u"--json"_s,
      u"--home"_s, u"HOME"_s}},
    {u"login-items-disable.txt",
     {u"login-items"_s, u"disable"_s, u"/Applications/Mail.app"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-disable.json",
     {u"login-items"_s, u"disable"_s, u"/Applications/Mail.app"_s, u"--json"_s, u"--home"_s,
      u"HOME"_s}},
    {u"login-items-add.json",
     {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--json"_s, u"--home"_s,
      u"HOME"_s}},
    {u"login-items-remove.txt",
     {u"login-items"_s, u"remove"_s, u"/Applications/Mail.app"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-remove.json",
     {u"login-items"_s, u"remove"_s, u"/Applications/Mail.app"_s, u"--json"_s, u"--home"_s,
      u"HOME"_s}},
    {u"login-items-enable.txt",
     {u"login-items"_s, u"enable"_s, u"/Applications/Mail.app"_s, u"--home"_s, u"HOME"_s}},
    {u"login-items-enable.json",
     {u"login-items"_s, u"enable"_s, u"/Applications/Mail.app"_s, u"--json"_s, u"--home"_s,
      u"HOME"_s}},
    {u"backups-list.txt", {u"backups"_s, u"list"_s}},
    {u"backups-list.json", {u"backups"_s, u"list"_s, u"--json"_s}},
    {u"backups-show.txt", {u"backups"_s, u"show"_s, u"quillet1.sqlite"_s}},
    {u"backups-show.json", {u"backups"_s, u"show"_s, u"quillet1.sqlite"_s, u"--json"_s}},
    {u"backups-restore.txt", {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s}},
    {u"backups-restore.json", {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--json"_s}},
    {u"backups-restore-dry.txt",
     {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s}},
    {u"backups-delete.txt", {u"backups"_s, u"delete"_s, u"quillet1.sqlite"_s}},
    {u"backups-delete.json", {u"backups"_s, u"delete"_s, u"quillet1.sqlite"_s, u"--json"_s}},
    {u"completion-bash.txt", {u"completion"_s, u"bash"_s}},
    {u"completion-zsh.txt", {u"completion"_s, u"zsh"_s}},
    {u"completion-fish.txt", {u"completion"_s, u"fish"_s}},
    {u"completion-fish.json", {u"completion"_s, u"fish"_s, u"--json"_s}},
    {u"help-processes.txt", {u"processes"_s, u"--help"_s}},
    {u"help-system.txt", {u"system"_s, u"--help"_s}},
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
        u"INSERT INTO users VALUES(1400,'','Größe','');INSERT INTO users VALUES(9999,'1','','');"_s;
    const Outcome made = runProgram(u"sqlite3"_s, {folder + u"/quillet1.sqlite", rows},
                                    QProcessEnvironment::systemEnvironment());
    ASSERT_EQ(made.status, 0) << made.err.toStdString();
}

/// When a file was made differs from run to run.
QByteArray withoutDates(const QByteArray &output)
{
    static const QRegularExpression date(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\+0000"_s);
    return QString::fromUtf8(output).replace(date, u"DATE"_s).toUtf8();
}

class GoldenTest : public TestWithParam<std::tuple<Golden, std::string, std::string>> { };

TEST_P(GoldenTest, theOutputStaysAsItIsWhateverTheFormatAndTheLocale)
{
    const auto &[golden, format, locale] = GetParam();
    TemporaryHome home;
    installSamples(home, QString::fromStdString(format));
    Varnelctl varnelctl(home);
    varnelctl.environment.insert(u"LC_ALL"_s, QString::fromStdString(locale));

    installLoginItems(home);
    if (golden.arguments.first() == u"backups")
        installBackup(home);
    QStringList arguments = golden.arguments;
    arguments.replaceInStrings(QRegularExpression(u"^HOME$"_s), home.path());
    const QString profiles = QStringLiteral(TEST_DATA) + u"/profiles/";
    arguments.replaceInStrings(u"PROFILE"_s, profiles + u"lab.json");
    arguments.replaceInStrings(u"NOTHING"_s, profiles + u"nothing.plist");
    varnelctl.environment.insert(u"SOURCE_DATE_EPOCH"_s, u"1321876800"_s);
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
