#include "cli/Varnelctl.h"

#include "base/Literals.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace varnel::test {

QJsonObject Outcome::json() const
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(out, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << out.toStdString();
    return document.object();
}

Varnelctl::Varnelctl(const TemporaryHome &home)
{
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
    environment.insert(QStringLiteral("varnelctl"), QStringLiteral(VARNELCTL));
    // Leak checks need what a test's container may not give.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), qEnvironmentVariable("ASAN_OPTIONS"));
}

Outcome Varnelctl::run(const QStringList &arguments) const
{
    return runProgram(QStringLiteral(VARNELCTL), arguments, environment);
}

Outcome Varnelctl::shell(const QString &line) const
{
    return runProgram(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line}, environment);
}

namespace {

Outcome runProgramAs(uid_t user, const QStringList &words, const QProcessEnvironment &environment)
{
    const QString id = QString::number(user);
    return runProgram(QStringLiteral("setpriv"),
                      QStringList {u"--reuid"_s, id, u"--regid"_s, id, u"--clear-groups"_s} + words,
                      environment);
}

} // namespace

Outcome Varnelctl::runAs(uid_t user, const QStringList &arguments) const
{
    return runProgramAs(user, QStringList {QStringLiteral(VARNELCTL)} + arguments, environment);
}

bool Varnelctl::canRunAs(uid_t user) const
{
    return !QStandardPaths::findExecutable(QStringLiteral("setpriv")).isEmpty()
        && runProgramAs(user, {u"/usr/bin/test"_s, u"-x"_s, QStringLiteral(VARNELCTL)}, environment)
               .status
        == 0;
}

Outcome runProgram(const QString &program, const QStringList &arguments,
                   const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments, QIODevice::ReadOnly);
    EXPECT_TRUE(process.waitForFinished(60000)) << qPrintable(program);
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << qPrintable(program);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

void installSample(const TemporaryHome &home, const QString &format, const QString &name)
{
    const QString sample = QStringLiteral(TEST_DATA) + u"/preferences/" + format + u'/' + name;
    writeFile(home.preference(name), fileBytes(sample));
}

void installSamples(const TemporaryHome &home, const QString &format)
{
    for (const char16_t *name : {u".GlobalPreferences.plist", u"com.apple.dock.plist",
                                 u"com.apple.finder.plist", u"com.apple.Safari.plist"})
        installSample(home, format, QString::fromUtf16(name));
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void expectGolden(const QString &file, QByteArray output, const TemporaryHome &home)
{
    output.replace(home.path().toUtf8(), "HOME");
    const QString path = QStringLiteral(TEST_DATA) + u"/cli/" + file;
    if (qEnvironmentVariableIsSet("VARNEL_UPDATE_GOLDEN"))
        writeFile(path, output);
    EXPECT_EQ(output.toStdString(), fileBytes(path).toStdString());
}

} // namespace varnel::test
