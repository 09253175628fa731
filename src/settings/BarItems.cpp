#include "settings/BarItems.h"

#include "base/Literals.h"

namespace varnel {

const QStringList &BarItems::allNames()
{
    static const QStringList names {u"Reading List"_s, u"Top Sites"_s, u"Address Book"_s,
                                    u"Bonjour"_s};
    return names;
}

BarItems BarItems::fromNames(const QStringList &names)
{
    BarItems items;
    for (int i = 0; i < count; ++i)
        items.shown[size_t(i)] = names.contains(allNames()[i], Qt::CaseInsensitive);
    return items;
}

BarItems BarItems::fromText(const QString &text)
{
    const QStringList digits = text.split(u';');
    BarItems items;
    for (int i = 0; i < count; ++i)
        items.shown[size_t(i)] = digits.value(i) == u"1";
    return items;
}

QStringList BarItems::names() const
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        if (shown[size_t(i)])
            names.append(allNames()[i]);
    }
    return names;
}

QString BarItems::text() const
{
    QStringList digits;
    for (const bool one : shown)
        digits.append(one ? u"1"_s : u"0"_s);
    return digits.join(u';');
}

} // namespace varnel
