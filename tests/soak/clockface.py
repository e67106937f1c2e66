# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""What the clock has to show at an instant, worked out from Python's own calendar and time zones."""

from dataclasses import dataclass
from datetime import date, datetime, timedelta, timezone
from zoneinfo import ZoneInfo

EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)
# The calendar and the rules of summer time repeat after 400 years, which helps where Python's
# years end.
CYCLE_YEARS = 400
CYCLE_SECONDS = 146097 * 86400
CYCLE_FROM = 9999

ENGLISH_DAYS = ("Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun")
ENGLISH_MONTHS = ("Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec")
JAPANESE_DAYS = "月火水木金土日"
FIRST_PARENTHESISED_DAY = 0x322A  # PARENTHESIZED IDEOGRAPH MOON; the others follow

# The first day of each era, the latest era first.
ERAS = (
    (date(2019, 5, 1), "令和"),
    (date(1989, 1, 8), "平成"),
    (date(1926, 12, 26), "昭和"),
    (date(1912, 7, 30), "大正"),
    (date(1868, 3, 5), "明治"),
    (date(1865, 1, 1), "慶応"),
)
LAST_YEAR_OF_ERAS = 9999


@dataclass
class Settings:
    zone: str = "UTC"
    language: str = "en"
    era: bool = False
    twelve: bool = False


@dataclass
class Shown:
    """Angles in degrees from three o'clock on, clockwise."""
    second: float
    minute: float
    hour: float
    time: str
    marker: str  # empty when the clock goes to 24
    date: str


def local_time(second: int, zone: str) -> tuple[datetime, int]:
    """The local time a number of seconds after the epoch, and what is to be added to its year."""
    cycles = 0
    if second >= (datetime(CYCLE_FROM, 1, 1, tzinfo=timezone.utc) - EPOCH).total_seconds():
        cycles = 1
    instant = EPOCH + timedelta(seconds=second - cycles * CYCLE_SECONDS)
    return instant.astimezone(ZoneInfo(zone)), cycles * CYCLE_YEARS


def japanese_date(day: date, year: int, with_era: bool) -> str:
    mark = chr(FIRST_PARENTHESISED_DAY + day.weekday())
    if not with_era:
        return f"{year}年{day.month}月{day.day}日{mark}"
    era = ""
    if year <= LAST_YEAR_OF_ERAS:
        first, name = next(row for row in ERAS if row[0] <= day)
        number = year - first.year + 1
        era = f"{name}{'元' if number == 1 else number}年"
    return f"{era}{day.month}月{day.day}日{mark}"


def shown(second: int, settings: Settings) -> Shown:
    """What stands on the face a number of seconds after the epoch."""
    local, more_years = local_time(second, settings.zone)
    year = local.year + more_years
    if settings.language == "ja":
        day_text = japanese_date(local.date(), year, settings.era)
    else:
        day_text = (f"{ENGLISH_DAYS[local.weekday()]} {ENGLISH_MONTHS[local.month - 1]} "
                    f"{local.day} {year}")
    hour = local.hour
    marker = ""
    if settings.twelve:
        marker = "AM" if hour < 12 else "PM"
        hour %= 12
    since_twelve = local.hour % 12 * 3600 + local.minute * 60 + local.second
    return Shown(
        second=360 * local.second / 60 - 90,
        minute=360 * (since_twelve % 3600) / 3600 - 90,
        hour=360 * since_twelve / 43200 - 90,
        time=f"{hour:02}:{local.minute:02}:{local.second:02}",
        marker=marker,
        date=day_text)
