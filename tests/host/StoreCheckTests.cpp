#include "apps/host/StoreCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "apps/host/DemoContent.h"
#include "model/GSData.h"
#include "platform/foundation/Text.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

class StoreCheckTest : public testing::Test {
  protected:
    StoreCheckTest() {
        GSData data;
        data.launch();
        addDemonstration(data.viewContext());
        EXPECT_EQ(data.viewContext().save(), std::nullopt);
    }

    /// What another program does to the store.
    void damage(const std::string& sql) {
        PlainDatabase(environment_.containerDirectory() / kStoreFileName).execute(sql);
    }

    struct Outcome {
        std::set<FaultKind> found;
        std::size_t mended = 0;
        std::size_t left = 0;
    };
    /// Checks, repairs and saves, then checks the store afresh.
    Outcome checkAndRepair() {
        Outcome outcome;
        GSData data;
        data.launch();
        for (const StoreFault& fault : checkStore(data.viewContext())) outcome.found.insert(fault.kind);
        EXPECT_FALSE(data.viewContext().hasChanges()) << "a check changes nothing";
        outcome.mended = repairStore(data.viewContext()).size();
        EXPECT_EQ(data.viewContext().save(), std::nullopt);
        GSData fresh;
        fresh.launch();
        outcome.left = checkStore(fresh.viewContext()).size();
        return outcome;
    }

    const TestEnvironment environment_;
};

TEST_F(StoreCheckTest, FindsNothingInASoundStore) {
    const Outcome outcome = checkAndRepair();
    EXPECT_TRUE(outcome.found.empty());
    EXPECT_EQ(outcome.mended, 0u);
}

TEST_F(StoreCheckTest, FindsAndMendsEveryFault) {
    // For where nothing is said: in one task.
    constexpr const char* kSomeTask =
        " WHERE Z_PK = (SELECT MIN(Z_PK) FROM ZGTASK WHERE ZREMOVED = 0 AND ZLIST = 1)";
    constexpr const char* kAlertAlone =
        "ZGTASK SET ZDUEDATE = NULL, ZHASDUEDATE = 0, ZALERTENABLED = 1, ZALERTDATE = 1.0";
    constexpr const char* kTuesdayThatRepeatsOnMondays =
        "ZGTASK SET ZCOMPLETED = 0, ZHASDUEDATE = 1, ZDUEDATE = 731332800.0, ZALERTREPEAT = 8192, "
        "ZALERTREPEATINTERVAL = 1, ZALERTREPEATDATA = '2'";
    constexpr const char* kParentOfOpenTasks =
        "ZGTASK SET ZCOMPLETED = 1 WHERE Z_PK = (SELECT MIN(ZPARENTTASK) FROM ZGTASK WHERE ZREMOVED = 0 AND "
        "ZCOMPLETED = 0)";
    using enum FaultKind;
    constexpr std::tuple<const char*, const char*, FaultKind> kRows[] = {
        {"task order",           "ZGTASK SET ZDISPLAYORDER = 17",                               kOrder     },
        {"list order",           "ZGLIST SET ZDISPLAYORDER = ZDISPLAYORDER + 3 WHERE Z_PK = 1", kOrder     },
        {"account order",        "ZGUSER SET ZDISPLAYORDER = 0 WHERE ZACCOUNTTYPE != 5000",     kOrder     },
        {"default lists",        "ZGLIST SET ZISDEFAULT = 1 WHERE ZREMOVED = 0",                kDefault   },
        {"default accounts",     "ZGUSER SET ZISDEFAULT = 1 WHERE 1",                           kDefault   },
        {"no list",              "ZGTASK SET ZLIST = 999",                                      kReference },
        {"nil list",             "ZGTASK SET ZLIST = NULL",                                     kReference },
        {"no account",           "ZGLIST SET ZUSER = 999 WHERE Z_PK = 2",                       kReference },
        {"no parent",            "ZGTASK SET ZPARENTTASK = 999",                                kReference },
        {"own parent",           "ZGTASK SET ZPARENTTASK = Z_PK",                               kReference },
        {"a circle",             "ZGTASK SET ZPARENTTASK = 3 - Z_PK WHERE Z_PK IN (1, 2)",      kReference },
        {"alert alone",          kAlertAlone,                                                   kDueDate   },
        {"flag alone",           "ZGTASK SET ZDUEDATE = NULL, ZHASDUEDATE = 1",                 kDueDate   },
        {"off the rule",         kTuesdayThatRepeatsOnMondays,                                  kRepeat    },
        {"open below completed", kParentOfOpenTasks,                                            kCompletion},
    };
    for (const auto& [what, change, kind] : kRows) {
        SCOPED_TRACE(what);
        const bool saysWhere = std::string_view(change).find("WHERE") != std::string_view::npos;
        damage(std::string("UPDATE ") + change + (saysWhere ? "" : kSomeTask));
        const Outcome outcome = checkAndRepair();
        EXPECT_TRUE(outcome.found.contains(kind));
        EXPECT_GT(outcome.mended, 0u);
        EXPECT_EQ(outcome.left, 0u);
    }
}

}  // namespace
}  // namespace corvane
