#include "shell/views/AccessibilityBus.h"

#include "base/Literals.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>

namespace varnel {

namespace {

/// The address that the session gives; null without a session bus, or where none answers in time.
QString busAddress()
{
    const QString given = qEnvironmentVariable("AT_SPI_BUS_ADDRESS");
    const QDBusConnection session = QDBusConnection::sessionBus();
    if (!given.isEmpty() || !session.isConnected())
        return given;
    constexpr int patience = 1000; // milliseconds
    const QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusMessage answer = session.call(question, QDBus::Block, patience);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString()
                                                       : QString();
}

} // namespace

void connectToAccessibilityBus()
{
    // The toolkit looks for a connection of this name before it makes one.
    if (const QString address = busAddress(); !address.isEmpty())
        QDBusConnection::connectToBus(address, u"a11y"_s);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace varnel
