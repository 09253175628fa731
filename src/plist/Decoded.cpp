#include "plist/Decoded.h"

namespace varnel::plist {

namespace {

struct Comparison {
    const Decoded &read;

    bool operator()(bool wanted) const
    {
        return read.value.kind == Kind::Boolean && read.value.boolean == wanted;
    }
    bool operator()(qint64 wanted) const
    {
        return read.value.kind == Kind::Integer && read.exact && read.value.integer == wanted;
    }
    bool operator()(const QString &wanted) const
    {
        return read.value.kind == Kind::String && read.value.string == wanted;
    }
    bool operator()(const QStringList &wanted) const
    {
        return read.value.kind == Kind::StringArray && read.value.strings == wanted;
    }
};

} // namespace

bool says(const Decoded &read, const NewValue &wanted)
{
    return std::visit(Comparison {read}, wanted);
}

} // namespace varnel::plist
