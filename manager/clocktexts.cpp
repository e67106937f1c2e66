// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/clocktexts.h"

#include "config/languagename.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

struct Era {
    QDate lastDay;
    int yearOffset; // what to take from the Gregorian year
    QString name;
};

const auto &eras()
{
    // The first row's day and offset are our own data and meant as they stand, whatever a
    // historian's table says.
    static const std::array<Era, 6> table{{
        {QDate(1868, 3, 4), 1864, u"慶応"_s},
        {QDate(1912, 7, 29), 1867, u"明治"_s},
        {QDate(1926, 12, 25), 1911, u"大正"_s},
        {QDate(1989, 1, 7), 1925, u"昭和"_s},
        {QDate(2019, 4, 30), 1988, u"平成"_s},
        {QDate(9999, 12, 31), 2018, u"令和"_s},
    }};
    return table;
}

QChar weekdayMark(QDate date)
{
    static const QString marks = u"㈪㈫㈬㈭㈮㈯㈰"_s; // Monday first
    return marks.at(date.dayOfWeek() - 1);
}

} // namespace

QString clockTimeText(QTime time, bool twelveHours)
{
    if (!twelveHours)
        return time.toString(u"hh:mm:ss"_s);
    // Midnight and noon are 00: this twelve-hour clock runs from 00 to 11, which is meant.
    return u"%1:%2:%3"_s.arg(time.hour() % 12, 2, 10, '0'_L1)
        .arg(time.minute(), 2, 10, '0'_L1)
        .arg(time.second(), 2, 10, '0'_L1);
}

QString amPmMarker(QTime time) { return time.hour() < 12 ? u"AM"_s : u"PM"_s; }

QString clockDateText(QDate date, const QString &languageName, bool useEra)
{
    if (!isJapaneseLanguage(languageName))
        return date.toString(Qt::TextDate);
    if (useEra)
        return japaneseEraText(date) + date.toString(u"M月d日"_s) + weekdayMark(date);
    // Not by "yyyy": newer versions of Qt put a sign before a year of five digits.
    return u"%1年"_s.arg(date.year(), 4, 10, '0'_L1) + date.toString(u"M月d日"_s)
        + weekdayMark(date);
}

QString japaneseEraText(QDate date)
{
    const auto era = std::find_if(
        eras().begin(), eras().end(), [date](const Era &row) { return date <= row.lastDay; });
    if (era == eras().end())
        return {};
    const int year = date.year() - era->yearOffset;
    return era->name + (year == 1 ? u"元"_s : QString::number(year)) + u"年"_s;
}
