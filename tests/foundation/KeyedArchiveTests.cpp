#include "platform/foundation/KeyedArchive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>

#include "PropertyListSamples.h"

namespace corvane {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

// Keys with numbers, texts, references and data: "Real=0.5 Text:name Reference@2 Data(0.5 0.25)"; a '_'
// at the end of data is a zero.
Dictionary objectOfKeys(std::string_view keys) {
    Dictionary object;
    while (!keys.empty()) {
        const std::size_t at = keys.find_first_of("=:@(");
        const char mark = keys[at];
        const std::size_t end = mark == '(' ? keys.find(')') : std::min(keys.find(' '), keys.size());
        const std::string value(keys.substr(at + 1, end - at - 1));
        PropertyList& kept = object[std::string(keys.substr(0, at))];
        const bool isReal = value.find('.') != value.npos;
        if (mark == '=' && isReal) kept.value = std::stod(value);
        if (mark == '=' && !isReal) kept.value = std::int64_t{std::stoi(value)};
        if (mark == ':') kept.value = value;
        if (mark == '@') kept.value = PropertyList::Uid{static_cast<std::uint64_t>(std::stoi(value))};
        if (mark == '(')
            kept.value = bytesOf(value.ends_with('_') ? value.substr(0, value.size() - 1) + '\0' : value);
        keys.remove_prefix(std::min(keys.find_first_not_of(") ", end), keys.size()));
    }
    return object;
}

// An archive of a colour object with the given keys, its objects in an unusual order.
Bytes archiveOf(const std::string& keys, const std::string& className = "UIColor",
                const std::string& archiver = "NSKeyedArchiver") {
    const PropertyList root{PropertyList::Uid{3}};
    const PropertyList description{
        Dictionary{{"$classname", {className}},
                   {"$classes", {Array{{className}, {std::string("NSObject")}}}}}
    };
    Dictionary color = objectOfKeys(keys);
    color["$class"].value = PropertyList::Uid{1};
    Dictionary archive;
    archive["$version"].value = std::int64_t{100'000};
    archive["$archiver"].value = archiver;
    archive["$top"].value = Dictionary{
        {"root", root}
    };
    archive["$objects"].value =
        Array{{std::string("$null")}, description, {std::string("systemRedColor")}, {color}};
    return binaryDataFromPropertyList({archive});
}

std::string textOfColor(const std::optional<Color>& color) {
    if (!color) return "none";
    std::ostringstream text;
    if (color->system == Color::System::kRed) text << "red: ";
    if (color->form == Color::Form::kWhite) {
        text << "white " << color->red;
    } else {
        text << "rgb " << color->red << " " << color->green << " " << color->blue;
    }
    text << " / " << color->alpha;
    return text.str();
}

TEST(KeyedArchive, ReadsEveryFormOfAColor) {
    constexpr std::pair<const char*, const char*> kRows[] = {
        {"UIColorComponentCount=2 UIWhite=0.5 UIAlpha=0.25",             "white 0.5 / 0.25"                },
        {"UIColorComponentCount=2 UIRed=1 UIGreen=1 UIBlue=1 UIWhite=0", "white 0 / 1"                     },
        {"UIColorComponentCount=4 UIRed=1 UIGreen=0 UIBlue=1 UIAlpha=1", "rgb 1 0 1 / 1"                   },
        {"UIRed=0.3 UIGreen=0.5 UIBlue=0.75 UIRed-Double=0.31",          "rgb 0.31 0.5 0.75 / 1"           },
        {"UIRed=1.25 UIGreen=-0.5 UIBlue=0",                             "rgb 1.25 -0.5 0 / 1"             },
        {"NSColorSpace=2 NSRGB(0.918 0.5 1)",                            "rgb 0.918 0.5 1 / 1"             },
        {"NSColorSpace=4 NSWhite(0.5 0.25_)",                            "white 0.5 / 0.25"                },
        {"UIRed=0.25 UIGreen=0.5 UIBlue=0.75 NSRGB(0.918 0.5 1)",        "rgb 0.25 0.5 0.75 / 1"           },
        {"UISystemColorName:systemRedColor",                             "red: rgb 1 0.231373 0.188235 / 1"},
        {"UIRed=1 UIGreen=0.25 UIBlue=0 UISystemColorName@2",            "red: rgb 1 0.25 0 / 1"           },
        {"",                                                             "none"                            },
        {"UIColorComponentCount=4 UIRed=0.25 UIBlue=0.75",               "none"                            },
        {"UIRed:1 UIGreen=0 UIBlue=0",                                   "none"                            },
        {"NSRGB(red)",                                                   "none"                            },
        {"UISystemColorName@9 UIWhite@9",                                "none"                            },
    };
    for (const auto& [keys, color] : kRows) {
        SCOPED_TRACE(keys);
        EXPECT_EQ(textOfColor(unarchivedColorSecurely(archiveOf(keys))), color);
        EXPECT_EQ(textOfColor(unarchivedColorLegacy(archiveOf(keys))), color);
    }
}

TEST(KeyedArchive, LooksAtTheClassInSecureModeOnly) {
    const Bytes foreign = archiveOf("UIRed=1 UIGreen=0 UIBlue=0", "OldColor");
    EXPECT_EQ(unarchivedColorSecurely(foreign), std::nullopt);
    EXPECT_EQ(unarchivedColorLegacy(foreign), Color::rgb(1, 0, 0));
}

TEST(KeyedArchive, GivesNothingForWhatIsNoArchive) {
    for (const Bytes& data : {Bytes(), bytesOf("\x04\x0bstreamtyped\x81\xe8\x03\x84\x01@"),
                              bytesOf(xmlPropertyList("<dict><key>$top</key><string>x</string></dict>")),
                              archiveOf("UIWhite=1", "UIColor", "OtherArchiver"), nestedBinary(2, 2, 0)}) {
        EXPECT_EQ(unarchivedColorSecurely(data), std::nullopt);
        EXPECT_EQ(unarchivedColorLegacy(data), std::nullopt);
    }
}

TEST(KeyedArchive, WritesWhatOldAndNewReadersUnderstand) {
    const auto list = propertyListFromData(archivedDataWithColor(Color::rgb(0.1, 0.9176, 1, 0.25)));
    ASSERT_TRUE(list);
    EXPECT_EQ(*list->find("$archiver"), PropertyList{std::string("NSKeyedArchiver")});
    EXPECT_EQ(*list->find("$version"), PropertyList{std::int64_t{100'000}});
    EXPECT_EQ(*list->find("$top")->find("root"), PropertyList{PropertyList::Uid{1}});
    const auto& objects = *list->find("$objects")->get<PropertyList::Array>();
    EXPECT_EQ(objects.at(0), PropertyList{std::string("$null")});
    const PropertyList::Dictionary expected = {
        {"$class",                {PropertyList::Uid{2}}        },
        {"UIColorComponentCount", {std::int64_t{4}}             },
        {"NSColorSpace",          {std::int64_t{2}}             },
        {"NSRGB",                 {bytesOf("0.1 0.918 1 0.25")} },
        {"UIRed",                 {static_cast<double>(0.1F)}   },
        {"UIGreen",               {static_cast<double>(0.9176F)}},
        {"UIBlue",                {1.0}                         },
        {"UIAlpha",               {0.25}                        },
        {"UIRed-Double",          {0.1}                         },
        {"UIGreen-Double",        {0.9176}                      },
        {"UIBlue-Double",         {1.0}                         },
        {"UIAlpha-Double",        {0.25}                        },
    };
    EXPECT_EQ(objects.at(1), PropertyList{expected});
    EXPECT_EQ(*objects.at(2).find("$classname"), PropertyList{std::string("UIColor")});
}

TEST(KeyedArchive, ReadsWhatItWrote) {
    const Color kColors[] = {Color::rgb(0.1, 0.2, 0.3),  Color::rgb(1.5, -0.25, 0, 0.123456789012345),
                             Color::white(1.0 / 3, 0.5), Color::rgb(1e300, 0, 0),
                             Color::systemRed(),         Color::tertiarySystemBackground()};
    for (const Color& color : kColors) {
        EXPECT_EQ(unarchivedColorSecurely(archivedDataWithColor(color)), color);
        EXPECT_EQ(unarchivedColorLegacy(archivedDataWithColor(color)), color);
    }
}

TEST(KeyedArchive, SurvivesMutations) {
    std::mt19937 random(71);
    const Bytes good = archivedDataWithColor(Color::systemRed());
    int colors = 0;
    for (int round = 0; round < 5000; ++round) {
        const Bytes data = mutated(good, random);
        if (unarchivedColorSecurely(data)) ++colors;
        const std::optional<Color> color = unarchivedColorLegacy(data);
        ASSERT_TRUE(!color || std::isfinite(color->red + color->green + color->blue + color->alpha));
    }
    EXPECT_GT(colors, 0);
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_EQ(unarchivedColorLegacy(std::span(good).first(length)), std::nullopt) << length;
    }
}

}  // namespace
}  // namespace corvane
