// What a worker tells of a home, a line: whatever is laid out as it stands is what Qt's own reader
// and writer would have made of it.

#include "cli/JsonMembers.h"
#include "harness/Input.h"
#include "harness/Require.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace varnel;
using namespace varnel::cli;
using namespace varnel::fuzz;

namespace {

QJsonObject objectOf(const QByteArray &members)
{
    return QJsonDocument::fromJson(QByteArray('{' + members + '}')).object();
}

void checkLine(const QByteArray &line)
{
    const JsonMembers heard = heardMembers(line);
    const QJsonObject meant = objectOf(line);
    require(heard == jsonMembers(meant), "a line is laid out as what is read in it");
    QJsonParseError error;
    const QJsonDocument list =
        QJsonDocument::fromJson(QByteArray('[' + elementOfHomes(heard) + ']'), &error);
    require(error.error == QJsonParseError::NoError, "the home's object is well-formed");
    require(list.array().size() == 1 && list[0].toObject() == meant,
            "the home's object holds just that");
}

/// What was read is told by our own writer, and heard as it was.
void checkTold(const QJsonObject &object)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QByteArray told = toldMember(member.key(), member.value());
        require(!told.contains('\n') && told.startsWith('"'), "a member is a line");
        require(heardMembers(told) == jsonMembers({{member.key(), member.value()}}),
                "what is told is heard");
        checkLine(told);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray line = Input(data, size).rest();
    checkLine(line);
    checkTold(objectOf(line));
    return 0;
}
