#include "platform/linux/UserSessions.h"

#include "support/TemporaryHome.h"

#include <QFile>

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>
#include <utmpx.h>

using namespace varnel;
using namespace varnel::test;

namespace {

QByteArray entry(short type, const QByteArray &user)
{
    utmpx one {};
    one.ut_type = type;
    qstrncpy(one.ut_user, user.constData(), sizeof one.ut_user);
    return {reinterpret_cast<const char *>(&one), sizeof one};
}

class UserSessionsTest : public testing::Test {
protected:
    [[nodiscard]] QString warnedOf(const QByteArray &record) const
    {
        const QString path = home.path() + u"/record";
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(record);
        file.close();
        return UserSessions(path).ownerWithSession(home.path());
    }

    TemporaryHome home;
    const QByteArray me = ::getpwuid(::getuid())->pw_name;
};

TEST_F(UserSessionsTest, theOwnerOfTheFolderIsFoundAmongThoseWhoAreLoggedIn)
{
    EXPECT_EQ(warnedOf(entry(USER_PROCESS, "somebody") + entry(USER_PROCESS, me)),
              QString::fromUtf8(me));
}

TEST_F(UserSessionsTest, othersAndSessionsThatHaveEndedDoNotCount)
{
    EXPECT_TRUE(warnedOf(entry(USER_PROCESS, "somebody") + entry(DEAD_PROCESS, me)).isNull());
    EXPECT_TRUE(warnedOf({}).isNull());
}

TEST_F(UserSessionsTest, anEntryThatIsCutShortCountsForNothing)
{
    EXPECT_TRUE(warnedOf(entry(USER_PROCESS, me).chopped(1)).isNull());
}

TEST_F(UserSessionsTest, aRecordOrFolderThatIsNotThereNamesNobody)
{
    EXPECT_TRUE(UserSessions(home.path() + u"/none").ownerWithSession(home.path()).isNull());
    EXPECT_TRUE(UserSessions().ownerWithSession(home.path() + u"/none").isNull());
}

} // namespace
