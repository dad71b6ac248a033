#include "apps/host/HandOverUrl.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"
#include "text/UrlEncoding.h"

namespace corvane {
namespace {

constexpr const char* kTask = "x-coredata://6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21/GTask/p12";

/// "today", "task p12", "add", or "refused".
std::string reading(std::u16string_view url) {
    const auto result = handOverFromUrl(url);
    if (const auto* reason = std::get_if<std::u16string>(&result)) {
        EXPECT_FALSE(reason->empty());
        EXPECT_EQ(reason->find(u'\n'), reason->npos);
        return "refused";
    }
    const auto& handOver = std::get<HandOverUrl>(result);
    if (const auto* task = std::get_if<ShowTask>(&handOver)) return "task " + task->taskid;
    return std::holds_alternative<ShowToday>(handOver) ? "today" : "add";
}

TEST(HandOverUrl, ReadsWhatTheWidgetWrites) {
    const TestEnvironment environment;
    const std::u16string encoded = stringByURLEncodingStringParameter(textFromUtf8(kTask));
    EXPECT_EQ(reading(u"velmor-plorixmax://localhost/today"), "today");
    EXPECT_EQ(reading(u"velmor-plorixmax://localhost/addtask"), "add");
    EXPECT_EQ(reading(u"velmor-plorixmax://localhost/today?taskid=" + encoded), "task " + std::string(kTask));
    EXPECT_EQ(reading(u"VELMOR-plorixmax://LocalHost/today"), "today");
    // Programs between decode what need not be encoded in a query.
    EXPECT_EQ(reading(u"velmor-plorixmax://localhost/today?taskid=" + textFromUtf8(kTask)),
              "task " + std::string(kTask));
}

TEST(HandOverUrl, RefusesEverythingElse) {
    const TestEnvironment environment;
    const std::string start = "velmor-plorixmax://localhost/";
    const std::string task = start + "today?taskid=";
    const std::string store = "x-coredata://6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21/";
    const std::vector<std::string> urls = {
        "",                                                // nothing
        "https://localhost/today",                         // another scheme
        "file:///etc/passwd",                              // a file
        "velmor-plorixmax:today",                          // no slashes
        "velmor-plorixmax://example.com/today",            // another host
        "velmor-plorixmax://localhost.example.com/today",  // a longer host
        "velmor-plorixmax://me@localhost/today",           // a user
        "velmor-plorixmax://localhost:80/today",           // a port
        start,                                             // no path
        start + "delete",                                  // another path
        start + "Today",                                   // path in capitals
        start + "today/",                                  // path goes on
        start + "x/../today",                              // path with dots
        start + "%74oday",                                 // encoded path
        start + "today#x",                                 // fragment
        start + "today?",                                  // empty query
        start + "addtask?taskid=" + kTask,                 // parameter of addtask
        start + "today?list=1",                            // another parameter
        task + kTask + "&delete=1",                        // a second parameter
        task + kTask + "&taskid=" + kTask,                 // the parameter twice
        task,                                              // no value
        task + "12",                                       // no URI
        task + store + "GList/p1",                         // a list
        task + store + "GNote/p1",                         // an unknown entity
        task + store + "GTask/p0",                         // row 0
        task + store + "GTask/p01",                        // a leading zero
        task + store + "GTask/p-1",                        // a negative row
        task + store + "GTask/p99999999999999999999",      // a row beyond 64 bits
        task + "x-coredata:///GTask/t1F",                  // an unsaved object
        task + "x-coredata://../GTask/p1",                 // a store that is no UUID
        task + kTask + "/x",                               // something behind
        task + "x-coredata%253A%252F%252F",                // encoded twice
        task + "x-coredata%3",                             // half an escape
        task + "%FF",                                      // bytes that are not UTF-8
        task + kTask + "%0A",                              // a line break
        start + "today\n",                                 // a raw line break
        " " + start + "today",                             // a blank
        start + "today" + std::string(1, '\0'),            // a NUL
        start + "tod\xC3\xA4y",                            // a letter beyond ASCII
        task + std::string(100'000, '1'),                  // a URL without end
    };
    for (const std::string& url : urls) {
        SCOPED_TRACE(url.substr(0, 200));
        EXPECT_EQ(reading(textFromUtf8(url)), "refused");
    }
}

// Whatever comes in, only what was meant gets out, and a task only by the URI of one.
TEST(HandOverUrl, ReadsMangledUrlsStrictly) {
    const TestEnvironment environment;
    std::mt19937 random(11);
    const auto upTo = [&](std::size_t n) { return random() % n; };
    const std::u16string written = u"velmor-plorixmax://localhost/today?taskid=" +
                                   stringByURLEncodingStringParameter(textFromUtf8(kTask));
    constexpr char16_t kLoneSurrogate = 0xD800;
    const std::u16string units = std::u16string(u"%&=?#+/:@.pG09aF \n\u00E9") + kLoneSurrogate;
    constexpr int kRounds = 20'000;
    int tasks = 0;
    for (int round = 0; round < kRounds; ++round) {
        std::u16string url = written;
        for (std::size_t edits = upTo(3) + 1; edits > 0 && url.size() > 1; --edits) {
            const std::size_t place = upTo(url.size());
            const char16_t unit = units[upTo(units.size())];
            switch (upTo(4)) {
                case 0:
                    url[place] = unit;
                    break;
                case 1:
                    url.insert(place, 1, unit);
                    break;
                case 2:
                    url.erase(place, 1);
                    break;
                case 3:
                    url.resize(place + 1);
                    break;
            }
        }
        const std::string read = reading(url);
        if (read == "refused" || read == "today") continue;
        ASSERT_TRUE(read.starts_with("task x-coredata://")) << utf8FromText(url);
        ASSERT_NE(read.find("/GTask/p"), read.npos) << utf8FromText(url);
        ASSERT_EQ(read.find_first_of("%&?#@\n"), read.npos) << utf8FromText(url);
        ++tasks;
    }
    EXPECT_GT(tasks, 0);
    EXPECT_LT(tasks, kRounds / 2);
}

}  // namespace
}  // namespace corvane
