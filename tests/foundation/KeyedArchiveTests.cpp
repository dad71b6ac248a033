#include "platform/foundation/KeyedArchive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "PropertyListSamples.h"

namespace corvane {
namespace {

// An XML archive of a colour object with the given keys. The order of its objects is not the usual one.
std::string archiveOf(std::string_view keys, std::string_view className = "UIColor",
                      std::string_view archiver = "NSKeyedArchiver") {
    const auto reference = [](int n) {
        return "<dict><key>CF$UID</key><integer>" + std::to_string(n) + "</integer></dict>";
    };
    const auto text = [](std::string_view value) { return "<string>" + std::string(value) + "</string>"; };
    return xmlPropertyList(
        "<dict><key>$version</key><integer>100000</integer><key>$archiver</key>" + text(archiver) +
        "<key>$top</key><dict><key>root</key>" + reference(3) + "</dict><key>$objects</key><array>" +
        text("$null") + "<dict><key>$classname</key>" + text(className) + "<key>$classes</key><array>" +
        text(className) + text("NSObject") + "</array></dict>" + text("systemRedColor") +
        "<dict><key>$class</key>" + reference(1) + std::string(keys) + "</dict></array></dict>");
}

std::string real(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><real>" + value + "</real>";
}
std::string integer(const std::string& key, int value) {
    return "<key>" + key + "</key><integer>" + std::to_string(value) + "</integer>";
}

// The same archive in the binary form.
Bytes binaryOf(const std::string& xml) {
    return binaryDataFromPropertyList(*propertyListFromData(bytesOf(xml)));
}

TEST(KeyedArchive, ReadsEveryFormOfAColor) {
    const std::string rgb = real("UIRed", "0.25") + real("UIGreen", "0.5") + real("UIBlue", "0.75");
    const std::string count2 = integer("UIColorComponentCount", 2),
                      count4 = integer("UIColorComponentCount", 4);
    const auto data = [](const char* key, const char* base64) {
        return std::string("<key>") + key + "</key><data>" + base64 + "</data>";
    };
    Color adaptiveRed = Color::rgb(0.25, 0.5, 0.75);
    adaptiveRed.system = Color::System::kRed;
    struct Row {
        const char* what;
        std::string keys;
        Color expected;
    };
    const Row kRows[] = {
        {"plain",                                                        count4 + rgb + real("UIAlpha",  "0.5"),                                                                    Color::rgb(0.25,                                                                                                                                                                      0.5,0.75, 0.5)},
        {"double precision first",                                                          count4 + rgb + real("UIRed-Double",                                                                                        "0.1") + real("UIAlpha",                                                                                                                                          "1"),
         Color::rgb(0.1,0.5, 0.75)},
        {"white",                                                 count2 + real("UIWhite",                                                                            "0.5") + real("UIAlpha",                                                                                                                                                "0.25"),                                                                                                                                                                                                                                                                                                                                    Color::white(0.5,                                                                                                                                                                                                          0.25)},
        {"white in double precision",                                       count2 + real("UIWhite","0.3") + real("UIWhite-Double","0.31"),
         Color::white(0.31)},
        {"count decides", count2 + rgb + real("UIWhite",               "0.5"),                                                                                                                                                                                     Color::white(0.5)                                                                                                                                                                                                                                                                                                                                             },
        {"no count",                                 rgb,                                           Color::rgb(0.25,0.5,0.75)                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                              },
        {"no count, white",                                               real("UIWhite",                                "0.5"),                                                                                                                                                                                      Color::white(0.5)                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                    },
        {"integers",                                                        count4 + integer("UIRed",                                      1) + integer("UIGreen",0) + integer("UIBlue",1),
         Color::rgb(1, 0, 1)},
        {"wide gamut",                                         count4 + real("UIRed",                                                                     "1.25") + real("UIGreen",                                                                                                                                                              "-0.5") + real("UIBlue",                                                                                                                                                                                                                                                                                                                                                 "0"),
         Color::rgb(1.25, -0.5, 0)},
        {"printed only, \"0.918 0.5 1\"",                                                   data("NSRGB",                    "MC45MTggMC41IDE="), Color::rgb(0.918, 0.5,1)},
        {"printed with alpha and NUL, \"0.5 0.25\"",                                                          data("NSWhite",                                                                                      "MC41IDAuMjUA"),
         Color::white(0.5,                                                                                                                                                                                                                                                                                                                     0.25)},
        {"printed and keys",                                              count4 + rgb + data("NSRGB",                                                                         "MC45MTggMC41IDE="),                                                                                                                                                Color::rgb(0.25,                                                                                                                                                                                                                                                                                                                                    0.5,0.75)},
        {"system colour without components",                                               "<key>UISystemColorName</key><string>systemRedColor</string>",
         Color::systemRed()                                                                                                                                                  },
        {"system colour by reference",
         rgb + "<key>UISystemColorName</key><dict><key>CF$UID</key><integer>2</integer></dict>",adaptiveRed},
        {"unknown system colour",rgb + "<key>UISystemColorName</key><string>systemInfraredColor</string>",
         Color::rgb(0.25,    0.5,                   0.75)},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(unarchivedColorSecurely(bytesOf(archiveOf(row.keys))), row.expected);
        EXPECT_EQ(unarchivedColorSecurely(binaryOf(archiveOf(row.keys))), row.expected);
        EXPECT_EQ(unarchivedColorLegacy(binaryOf(archiveOf(row.keys))), row.expected);
    }
}

TEST(KeyedArchive, LooksAtTheClassInSecureModeOnly) {
    const std::string keys = real("UIRed", "1") + real("UIGreen", "0") + real("UIBlue", "0");
    const Bytes foreign = binaryOf(archiveOf(keys, "OldColor"));
    EXPECT_EQ(unarchivedColorSecurely(foreign), std::nullopt);
    EXPECT_EQ(unarchivedColorLegacy(foreign), Color::rgb(1, 0, 0));
}

TEST(KeyedArchive, GivesNothingForWhatIsNoColor) {
    const std::string red = real("UIRed", "1");
    const std::string noNumber = real("UIRed", "nan") + real("UIGreen", "0") + real("UIBlue", "0");
    const Bytes otherArchiver = binaryOf(archiveOf(real("UIWhite", "1"), "UIColor", "OtherArchiver"));
    const Bytes cyclic = nestedBinary(2, 2, 0);
    const std::string danglingReference = xmlPropertyList(
        "<dict><key>$archiver</key><string>NSKeyedArchiver</string><key>$objects</key><array/>"
        "<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>9</integer></dict></dict></"
        "dict>");
    struct Row {
        const char* what;
        Bytes data;
    };
    const Row kRows[] = {
        {"empty",                          Bytes()                                                                   },
        {"the form before keyed archives", bytesOf("\x04\x0bstreamtyped\x81\xe8\x03\x84\x01@")                       },
        {"no colour keys",                 binaryOf(archiveOf(""))                                                   },
        {"two components missing",         binaryOf(archiveOf(red))                                                  },
        {"a component that is no number",  binaryOf(archiveOf(noNumber))                                             },
        {"a printed word, \"red\"",        binaryOf(archiveOf("<key>NSRGB</key><data>cmVk</data>"))                  },
        {"another archiver",               otherArchiver                                                             },
        {"another property list",          bytesOf(xmlPropertyList("<dict><key>$top</key><string>x</string></dict>"))},
        {"a reference out of range",       bytesOf(danglingReference)                                                },
        {"cyclic",                         cyclic                                                                    },
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(unarchivedColorSecurely(row.data), std::nullopt) << row.what;
        EXPECT_EQ(unarchivedColorLegacy(row.data), std::nullopt) << row.what;
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

TEST(KeyedArchive, WritesPlainComponentsInFourBytes) {
    const Bytes data = archivedDataWithColor(Color::rgb(0.1, 0.1, 0.1));
    const Bytes single = {0x22, 0x3D, 0xCC, 0xCC, 0xCD};
    EXPECT_NE(std::ranges::search(data, single).begin(), data.end());
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
    const Bytes xml =
        bytesOf(archiveOf(real("UIRed", "0.25") + real("UIGreen", "0.5") + real("UIBlue", "0.75")));
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
