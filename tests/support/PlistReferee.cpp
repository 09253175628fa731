#include "support/PlistReferee.h"

#include <QProcess>
#include <QStandardPaths>

#include <stdexcept>

namespace varnel::test {

namespace {

constexpr const char *script = R"(
import plistlib, sys
from datetime import datetime as date
from plistlib import UID

def show(value):
    if isinstance(value, dict):
        return '{' + ', '.join(entries(value)) + '}'
    if isinstance(value, list):
        return '[' + ', '.join(map(show, value)) + ']'
    return repr(value)

def entries(value):
    return [repr(key) + ': ' + show(value[key]) for key in sorted(value)]

def load(path):
    with open(path, 'rb') as file:
        return plistlib.load(file)

def line(path):
    try:
        return show(load(path))
    except FileNotFoundError:
        return 'missing'
    except Exception:
        return 'unreadable'

verb, *rest = sys.argv[1:]
sys.stdout.reconfigure(encoding='utf-8')
if verb == 'read':
    print('\n'.join(map(line, rest)))
elif verb == 'entries':
    print('\n'.join(entries(load(rest[0]))))
elif verb == 'elements':
    array = load(rest[0])
    for key in rest[1:]:
        array = array[key]
    print('\n'.join(map(show, array)))
else:
    path, expression, form = rest
    with open(path, 'wb') as file:
        plistlib.dump(eval(expression), file, fmt=getattr(plistlib, form), sort_keys=False)
)";

QStringList python(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("python3"),
                  QStringList {QStringLiteral("-c"), QString::fromUtf8(script)} + arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error(process.readAllStandardError().constData());
    QString output = QString::fromUtf8(process.readAllStandardOutput());
    output.chop(1);
    return output.split(u'\n');
}

} // namespace

bool PlistReferee::isHere()
{
    return !QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty();
}

QStringList PlistReferee::read(const QStringList &paths)
{
    return python(QStringList {QStringLiteral("read")} + paths);
}

QStringList PlistReferee::entries(const QString &path)
{
    return python({QStringLiteral("entries"), path});
}

QStringList PlistReferee::elements(const QString &path, const QStringList &keys)
{
    return python(QStringList {QStringLiteral("elements"), path} + keys);
}

void PlistReferee::write(const QString &path, const QString &expression, Format format)
{
    (void)python(
        {QStringLiteral("write"), path, expression,
         format == Format::Binary ? QStringLiteral("FMT_BINARY") : QStringLiteral("FMT_XML")});
}

} // namespace varnel::test
