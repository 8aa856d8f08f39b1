#include "metadata/iptc/iptc_fields.h"

namespace ml::metadata {
namespace {

using enum IptcPage;
using Kind = IptcFieldKind;

constexpr IptcChoice kPriorities[] = {{"1", "most urgent"}, {"2", ""}, {"3", ""}, {"4", ""},
                                      {"5", "normal"},      {"6", ""}, {"7", ""}, {"8", "least urgent"}};
constexpr IptcChoice kCycles[] = {{"a", "morning"}, {"p", "evening"}, {"b", "both"}};

constexpr IptcField kFields[] = {
    {120, Caption, Kind::Text, "&Caption", "What the picture shows"},
    {122, Caption, Kind::Line, "Captio&n writer", "Who wrote the caption"},
    {105, Caption, Kind::Line, "&Headline", "The picture in a few words"},
    {40, Caption, Kind::Text, "Special &instructions", "What an editor has to know"},
    {7, Caption, Kind::Line, "E&dit status", "How far the work on it is"},
    {22, Caption, Kind::Line, "&Job id", "The order that it belongs to"},

    {25, Keywords, Kind::List, "&Keywords", "Words to find the picture by"},

    {15, Category, Kind::Line, "&Category", "Three letters at most"},
    {20, Category, Kind::List, "Su&pplemental categories", "Further categories, of any length"},
    {10, Category, Kind::Choice, "Pri&ority", "How urgent it is, from 1 to 8", kPriorities},

    {80, Credits, Kind::Line, "&By-line", "Who took the picture"},
    {85, Credits, Kind::Line, "By-line t&itle", "Their profession or position"},
    {110, Credits, Kind::Line, "C&redit", "Who is to be named with it"},
    {115, Credits, Kind::Line, "So&urce", "Where it first came from"},
    {116, Credits, Kind::Line, "&Copyright", "Whose rights are to be named"},

    {5, Origin, Kind::Line, "&Object name", "A short title"},
    {55, Origin, Kind::Date, "&Date created", "YYYYMMDD, of what the picture shows"},
    {60, Origin, Kind::Time, "Time created", "HHMMSS with the zone, such as 101112+0200"},
    {30, Origin, Kind::Date, "&Release date", "YYYYMMDD, not to be used before"},
    {35, Origin, Kind::Time, "Release time", "HHMMSS with the zone, such as 101112+0200"},
    {65, Origin, Kind::Line, "Ori&ginating program", "What made the file"},
    {75, Origin, Kind::Choice, "Ob&ject cycle", "The editions that it is meant for", kCycles},
    {90, Origin, Kind::Line, "C&ity", "Where it was taken"},
    {92, Origin, Kind::Line, "Su&b-location", "The place in the city"},
    {95, Origin, Kind::Line, "State or &province", "Where it was taken"},
    {101, Origin, Kind::Line, "Co&untry", "Where it was taken"},
    {100, Origin, Kind::Line, "&Country code", "Three letters, such as FRA"},
    {103, Origin, Kind::Line, "Original trans&mission reference", "Where it was sent from"},
};

}  // namespace

std::span<const IptcField> IptcFields() { return kFields; }

}  // namespace ml::metadata
