#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "platform/runtime/Date.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {
namespace {

constexpr double kFirstSerial = -657434;  // January 1, 100
constexpr double kLastSerial = 2958465;   // December 31, 9999

// The moment of a date on a line without the fold before day 0.
double MomentOf(Date date) {
    const double day = std::trunc(date.Serial());
    return day + std::fabs(date.Serial() - day);
}

int DaysIn(int month, int year) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month - 1];
}

TEST(DateParts, AgreeWithAWalkDayByDay) {
    int year = 1899;
    int month = 12;
    int day = 30;
    int dayOfYear = 364;
    int weekday = 7;  // a Saturday
    for (double serial = 0; serial <= 146097 * 2; ++serial) {
        const Date date = Date::FromSerial(serial);
        ASSERT_EQ(date.Year(), year) << serial;
        ASSERT_EQ(date.Month(), month) << serial;
        ASSERT_EQ(date.Day(), day) << serial;
        ASSERT_EQ(date.DayOfYear(), dayOfYear) << serial;
        ASSERT_EQ(date.Weekday(), weekday) << serial;
        ASSERT_EQ(Date::FromYmd(year, month, day), date);
        weekday = weekday % 7 + 1;
        ++day;
        ++dayOfYear;
        if (day > DaysIn(month, year)) {
            ASSERT_FALSE(Date::IsCalendarDay(year, month, day));
            day = 1;
            if (++month > 12) {
                month = 1;
                dayOfYear = 1;
                ++year;
            }
        }
    }
    EXPECT_EQ(Date::FromYmd(100, 1, 1).Serial(), kFirstSerial);
    EXPECT_EQ(Date::FromYmd(9999, 12, 31).Serial(), kLastSerial);
    EXPECT_EQ(Date::FromYmd(2003, 8, 15).Serial(), 37848);
}

TEST(DateParts, NoSuchDayFails) {
    EXPECT_THROW(Date::FromYmd(2003, 2, 29), PlatformError);
    EXPECT_THROW(Date::FromYmd(99, 1, 1), PlatformError);
    EXPECT_THROW(Date::FromSerial(kLastSerial + 1).Year(), PlatformError);
    EXPECT_THROW(Date::FromSerial(std::nan("")).Year(), PlatformError);
}

TEST(DateParts, YearsOn) {
    const Date leapDay = Date::FromYmd(2004, 2, 29);
    EXPECT_EQ(leapDay.AddYears(4), Date::FromYmd(2008, 2, 29));
    EXPECT_THROW(leapDay.AddYears(1), PlatformError);
    EXPECT_EQ(leapDay.AddYearsWithinMonth(1), Date::FromYmd(2005, 2, 28));
    EXPECT_EQ(leapDay.AddYearsWithinMonth(4), Date::FromYmd(2008, 2, 29));
    EXPECT_EQ(Date::FromYmd(2003, 2, 28).AddYearsWithinMonth(1), Date::FromYmd(2004, 2, 28));
    // Before day 0 the time of day counts forward from a negative day.
    const Date noon = Date::FromSerial(Date::FromYmd(1899, 12, 1).Serial() - 0.5);
    EXPECT_EQ(noon.AddYears(1).Serial(), Date::FromYmd(1900, 12, 1).Serial() + 0.5);
    EXPECT_EQ(FormatIsoDate(Date::FromSerial(-1.25)), "1899-12-29T06:00:00");
}

TEST(DateTexts, EveryDayComesBackExactlyAndEveryTimeWithinASecond) {
    for (double serial = kFirstSerial; serial <= kLastSerial; serial += 7) {
        const Date date = Date::FromSerial(serial);
        ASSERT_EQ(ParseIsoDate(FormatIsoDate(date)), date);
        ASSERT_EQ(serial == 0 ? date : ParseDate(FormatShortDate(date), Date()), date);
    }
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> serials(kFirstSerial - 0.999, kLastSerial + 0.999);
    for (int i = 0; i < 50000; ++i) {
        const Date date = Date::FromSerial(serials(random));
        const auto iso = ParseIsoDate(FormatIsoDate(date));
        ASSERT_TRUE(iso) << FormatIsoDate(date);
        ASSERT_LT(std::fabs(MomentOf(*iso) - MomentOf(date)) * 86400, 1) << date.Serial();
        ASSERT_EQ(ParseDate(FormatShortDate(date), Date()), iso) << date.Serial();
    }
    // Half a second before midnight is the next day, but for the calendar's last.
    EXPECT_EQ(FormatIsoDate(Date::FromSerial(1.999999)), "1900-01-01");
    EXPECT_EQ(FormatIsoDate(Date::FromSerial(kLastSerial + 0.9999999)), "9999-12-31T23:59:59");
}

TEST(DateTexts, ShortForm) {
    const Date day = Date::FromYmd(2003, 8, 15);
    const std::pair<Date, const char*> table[] = {{Date(), "12:00:00 AM"},
                                                  {Date::FromSerial(0.5), "12:00:00 PM"},
                                                  {Date::FromYmd(2003, 8, 5), "8/5/2003"},
                                                  {day.AddDays(14.0 / 24 + 5.0 / 1440), "8/15/2003 2:05:00 PM"},
                                                  {day.AddDays(1.0 / 1440), "8/15/2003 12:01:00 AM"}};
    for (const auto& [date, text] : table) EXPECT_EQ(FormatShortDate(date), text);
}

TEST(DateTexts, WhatAUserTypes) {
    const std::pair<const char*, std::vector<const char*>> table[] = {
        {"2003-08-15",
         {"8/15/2003", " 08-15-03 ", "8.15.2003", "8 15 2003", "2003-08-15", "August 15, 2003", "15-Aug-03", "Aug. 15, 2003",
          "081503", "08152003", "Aug 15 2003 12 am"}},
        {"2003-09-01", {"Sept 1, 2003"}},
        {"2004-08-15", {"8/15"}},
        {"2004-02-29", {"Feb 29"}},
        {"2029-01-01", {"1/1/29"}},
        {"1930-01-01", {"1/1/30"}},
        {"2000-01-01", {"1/1/00"}},
        {"2003-08-15T14:05:00", {"8/15/2003 2:05 PM", "081503 2:05pm"}},
        {"2003-08-15T14:05:30", {"8/15/03 14:05:30"}},
        {"",
         {"", "SOLD", "2/29/2003", "15/8/2003", "20030815", "8/15/200", "8/15/2003/1", "8//15/2003", "8/15/", "8,15,2003",
          "Aug 2003", "8/15/2003 25:00", "8/15/2003 13:00 PM", "2:05 PM", "5", "-8/15/2003", "8/15/99999999999999999999"}}};
    for (const auto& [iso, texts] : table) {
        for (const char* text : texts) {
            const auto date = ParseDate(text, Date::FromYmd(2004, 3, 1));
            EXPECT_EQ(date ? FormatIsoDate(*date) : "", iso) << text;
        }
    }
}

TEST(DateTexts, FilesHoldOneFormOnly) {
    for (const char* text : {"2003-8-15", "20030815", "2003-02-29", "2003-08-15 ", "2003-08-15T24:00:00", "2003-08-15T10:00",
                             "2003-08-15 10:00:00", "0099-01-01", "+003-08-15", ""}) {
        EXPECT_FALSE(ParseIsoDate(text)) << text;
    }
}

}  // namespace
}  // namespace tallymar
