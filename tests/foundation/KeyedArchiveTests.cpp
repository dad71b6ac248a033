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

std::string element(const std::string& name, std::string_view contents) {
    return "<" + name + ">" + std::string(contents) + "</" + name + ">";
}

std::string reference(std::string_view index) {
    return element("dict", element("key", "CF$UID") + element("integer", index));
}

// The printed components of the rows below, in Base64.
std::string base64Of(const std::string& printed) {
    if (printed == "0.918 0.5 1)") return "MC45MTggMC41IDE=";
    if (printed == "0.5 0.25 NUL)") return "MC41IDAuMjUA";
    return "cmVk";  // red
}

// The XML of keys and values: "Real=0.5 Integer=4 Text:name Reference@2 Data(0.5 0.25 NUL)".
std::string xmlOfKeys(std::string_view keys) {
    std::string xml;
    while (!keys.empty()) {
        const std::size_t at = keys.find_first_of("=:@(");
        const char mark = keys[at];
        const std::size_t end = mark == '(' ? keys.find(')') + 1 : std::min(keys.find(' '), keys.size());
        const std::string value(keys.substr(at + 1, end - at - 1));
        const bool isInteger = value.find_first_not_of("0123456789") == std::string::npos;
        xml += element("key", keys.substr(0, at));
        if (mark == '=') xml += element(isInteger ? "integer" : "real", value);
        if (mark == ':') xml += element("string", value);
        if (mark == '@') xml += reference(value);
        if (mark == '(') xml += element("data", base64Of(value));
        keys.remove_prefix(std::min(end + 1, keys.size()));
    }
    return xml;
}

// An XML archive of a colour object with the given keys, its objects in an unusual order.
std::string archiveOf(const std::string& keys, std::string_view className = "UIColor",
                      std::string_view archiver = "NSKeyedArchiver") {
    const std::string classes =
        element("array", element("string", className) + element("string", "NSObject"));
    const std::string description =
        element("key", "$classname") + element("string", className) + element("key", "$classes") + classes;
    const std::string objects = element("string", "$null") + element("dict", description) +
                                element("string", "systemRedColor") +
                                element("dict", element("key", "$class") + reference("1") + xmlOfKeys(keys));
    return xmlPropertyList(element("dict", element("key", "$version") + element("integer", "100000") +
                                               element("key", "$archiver") + element("string", archiver) +
                                               element("key", "$top") +
                                               element("dict", element("key", "root") + reference("3")) +
                                               element("key", "$objects") + element("array", objects)));
}

// The same property list in the binary form.
Bytes binaryOf(const std::string& xml) {
    return binaryDataFromPropertyList(*propertyListFromData(bytesOf(xml)));
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
    struct Row {
        const char* keys;
        const char* color;
    };
    constexpr Row kRows[] = {
        {"UIColorComponentCount=4 UIRed=0.25 UIGreen=0.5 UIBlue=0.75",   "rgb 0.25 0.5 0.75 / 1"           },
        {"UIColorComponentCount=2 UIWhite=0.5 UIAlpha=0.25",             "white 0.5 / 0.25"                },
        {"UIColorComponentCount=2 UIRed=1 UIGreen=1 UIBlue=1 UIWhite=0", "white 0 / 1"                     },
        {"UIColorComponentCount=4 UIRed=1 UIGreen=0 UIBlue=1 UIAlpha=1", "rgb 1 0 1 / 1"                   },
        {"UIRed=0.25 UIGreen=0.5 UIBlue=0.75 UIAlpha=0.5",               "rgb 0.25 0.5 0.75 / 0.5"         },
        {"UIWhite=0.5",                                                  "white 0.5 / 1"                   },
        {"UIRed=0.3 UIGreen=0.5 UIBlue=0.75 UIRed-Double=0.31",          "rgb 0.31 0.5 0.75 / 1"           },
        {"UIWhite=0.3 UIWhite-Double=0.31 UIAlpha-Double=0.5",           "white 0.31 / 0.5"                },
        {"UIRed=1.25 UIGreen=-0.5 UIBlue=0",                             "rgb 1.25 -0.5 0 / 1"             },
        {"NSColorSpace=2 NSRGB(0.918 0.5 1)",                            "rgb 0.918 0.5 1 / 1"             },
        {"NSColorSpace=4 NSWhite(0.5 0.25 NUL)",                         "white 0.5 / 0.25"                },
        {"NSWhite:0.5",                                                  "white 0.5 / 1"                   },
        {"UIRed=0.25 UIGreen=0.5 UIBlue=0.75 NSRGB(0.918 0.5 1)",        "rgb 0.25 0.5 0.75 / 1"           },
        {"UISystemColorName:systemRedColor",                             "red: rgb 1 0.231373 0.188235 / 1"},
        {"UIRed=1 UIGreen=0.25 UIBlue=0 UISystemColorName@2",            "red: rgb 1 0.25 0 / 1"           },
        {"UIWhite=0.5 UISystemColorName:systemInfraredColor",            "white 0.5 / 1"                   },
        {"",                                                             "none"                            },
        {"UIColorComponentCount=4 UIRed=0.25 UIBlue=0.75",               "none"                            },
        {"UIRed=nan UIGreen=0 UIBlue=0",                                 "none"                            },
        {"UIRed:1 UIGreen=0 UIBlue=0",                                   "none"                            },
        {"NSRGB(red)",                                                   "none"                            },
        {"UISystemColorName@9 UIWhite@9",                                "none"                            },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.keys);
        const std::string xml = archiveOf(row.keys);
        EXPECT_EQ(textOfColor(unarchivedColorSecurely(bytesOf(xml))), row.color);
        EXPECT_EQ(textOfColor(unarchivedColorSecurely(binaryOf(xml))), row.color);
        EXPECT_EQ(textOfColor(unarchivedColorLegacy(binaryOf(xml))), row.color);
    }
}

TEST(KeyedArchive, LooksAtTheClassInSecureModeOnly) {
    const Bytes foreign = binaryOf(archiveOf("UIRed=1 UIGreen=0 UIBlue=0", "OldColor"));
    EXPECT_EQ(unarchivedColorSecurely(foreign), std::nullopt);
    EXPECT_EQ(unarchivedColorLegacy(foreign), Color::rgb(1, 0, 0));
}

TEST(KeyedArchive, GivesNothingForWhatIsNoArchive) {
    const std::string dangling = xmlPropertyList(
        "<dict><key>$archiver</key><string>NSKeyedArchiver</string><key>$objects</key><array/>"
        "<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>9</integer></dict></dict></"
        "dict>");
    for (const std::string& text :
         {std::string(), std::string("\x04\x0bstreamtyped\x81\xe8\x03\x84\x01@"), dangling,
          xmlPropertyList("<dict><key>$top</key><string>x</string></dict>"),
          archiveOf("UIWhite=1", "UIColor", "OtherArchiver")}) {
        EXPECT_EQ(unarchivedColorSecurely(bytesOf(text)), std::nullopt) << text;
        EXPECT_EQ(unarchivedColorLegacy(bytesOf(text)), std::nullopt) << text;
    }
    EXPECT_EQ(unarchivedColorLegacy(nestedBinary(2, 2, 0)), std::nullopt);
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

TEST(KeyedArchive, WritesPlainComponentsInFourBytes) {
    const Bytes data = archivedDataWithColor(Color::rgb(0.1, 0.1, 0.1));
    const Bytes single = {0x22, 0x3D, 0xCC, 0xCC, 0xCD};
    EXPECT_NE(std::search(data.begin(), data.end(), single.begin(), single.end()), data.end());
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
    const Bytes xml = bytesOf(archiveOf("UIRed=0.25 UIGreen=0.5 UIBlue=0.75"));
    int colors = 0;
    for (int round = 0; round < 5000; ++round) {
        for (const Bytes& data : {mutated(good, random), mutated(xml, random)}) {
            if (unarchivedColorSecurely(data)) ++colors;
            const std::optional<Color> color = unarchivedColorLegacy(data);
            ASSERT_TRUE(!color || std::isfinite(color->red + color->green + color->blue + color->alpha));
        }
    }
    EXPECT_GT(colors, 0);
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_EQ(unarchivedColorLegacy(std::span(good).first(length)), std::nullopt) << length;
    }
}

}  // namespace
}  // namespace corvane
