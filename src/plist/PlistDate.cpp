#include "plist/PlistDate.h"

#include <QDate>
#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace varnel::plist {

namespace {

constexpr qint64 secondsOfDay = 86400;

QDate firstDay()
{
    return {2001, 1, 1};
}

std::optional<int> takeNumber(QByteArrayView &text, qsizetype digits, char end)
{
    if (text.size() <= digits || text[digits] != end)
        return {};
    int number = 0;
    for (const char c : text.first(digits)) {
        if (c < '0' || c > '9')
            return {};
        number = 10 * number + (c - '0');
    }
    text = text.sliced(digits + 1);
    return number;
}

/// "05Z" or "05.25Z", all of the text.
std::optional<double> takeSeconds(QByteArrayView text)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.size() < 3 || !text.endsWith('Z') || !isDigit(text[0]) || !isDigit(text[1]))
        return {};
    text.chop(1);
    if (text.size() > 2 && (text[2] != '.' || text.size() == 3))
        return {};
    if (text.size() > 3 && !std::all_of(text.begin() + 3, text.end(), isDigit))
        return {};
    double seconds = 0;
    std::from_chars(text.begin(), text.end(), seconds);
    if (seconds >= 60)
        return {};
    return seconds;
}

} // namespace

std::optional<double> secondsOfDate(QByteArrayView text)
{
    text = text.trimmed();
    const auto year = takeNumber(text, 4, '-');
    const auto month = takeNumber(text, 2, '-');
    const auto day = takeNumber(text, 2, 'T');
    const auto hour = takeNumber(text, 2, ':');
    const auto minute = takeNumber(text, 2, ':');
    const auto second = takeSeconds(text);
    if (!year || !month || !day || !hour || !minute || !second || *hour > 23 || *minute > 59)
        return {};
    const QDate date(*year, *month, *day);
    if (*year == 0 || !date.isValid())
        return {};
    const qint64 whole =
        firstDay().daysTo(date) * secondsOfDay + (qint64 {*hour} * 60 + *minute) * 60;
    return static_cast<double>(whole) + *second;
}

std::optional<QString> dateOfSeconds(double seconds)
{
    const double whole = std::floor(seconds);
    // Not a number compares as false.
    if (!(whole >= static_cast<double>(firstDay().daysTo(QDate(1, 1, 1)) * secondsOfDay)
          && whole < static_cast<double>(firstDay().daysTo(QDate(10000, 1, 1)) * secondsOfDay)))
        return {};
    auto inDay = static_cast<qint64>(whole) % secondsOfDay;
    if (inDay < 0)
        inDay += secondsOfDay;
    const QDate date = firstDay().addDays((static_cast<qint64>(whole) - inDay) / secondsOfDay);
    const auto two = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    QString fraction;
    if (seconds != whole) {
        // The digits behind "0.", as few as tell the fraction of this double.
        fraction = QString::number(seconds - whole, 'f', QLocale::FloatingPointShortest).sliced(1);
    }
    return QString(QString::number(date.year()).rightJustified(4, u'0') + u'-' + two(date.month())
                   + u'-' + two(date.day()) + u'T' + two(inDay / 3600) + u':' + two(inDay / 60 % 60)
                   + u':' + two(inDay % 60) + fraction + u'Z');
}

} // namespace varnel::plist
