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
    constexpr const char* kSomeTask = "(SELECT MIN(Z_PK) FROM ZGTASK WHERE ZREMOVED = 0 AND ZLIST = 1)";
    const std::string where = std::string(" WHERE Z_PK = ") + kSomeTask;
    struct Row {
        const char* what;
        std::string sql;
        FaultKind kind;
    };
    const Row kRows[] = {
        {"task order",             "UPDATE ZGTASK SET ZDISPLAYORDER = 17" + where,                          FaultKind::kOrder     },
        {"list order",             "UPDATE ZGLIST SET ZDISPLAYORDER = ZDISPLAYORDER + 3 WHERE Z_PK = 1",
         FaultKind::kOrder                                                                                                        },
        {"account order",          "UPDATE ZGUSER SET ZDISPLAYORDER = 0 WHERE ZACCOUNTTYPE != 5000",
         FaultKind::kOrder                                                                                                        },
        {"default lists",          "UPDATE ZGLIST SET ZISDEFAULT = 1 WHERE ZREMOVED = 0",                   FaultKind::kDefault   },
        {"default accounts",       "UPDATE ZGUSER SET ZISDEFAULT = 1",                                      FaultKind::kDefault   },
        {"no list",                "UPDATE ZGTASK SET ZLIST = 999" + where,                                 FaultKind::kReference },
        {"nil list",               "UPDATE ZGTASK SET ZLIST = NULL" + where,                                FaultKind::kReference },
        {"no account",             "UPDATE ZGLIST SET ZUSER = 999 WHERE Z_PK = 2",                          FaultKind::kReference },
        {"no parent",              "UPDATE ZGTASK SET ZPARENTTASK = 999" + where,                           FaultKind::kReference },
        {"own parent",             "UPDATE ZGTASK SET ZPARENTTASK = Z_PK" + where,                          FaultKind::kReference },
        {"alert without due date",
         "UPDATE ZGTASK SET ZDUEDATE = NULL, ZHASDUEDATE = 0, ZALERTENABLED = 1, ZALERTDATE = 1.0" + where,
         FaultKind::kDueDate                                                                                                      },
        {"flag without due date",  "UPDATE ZGTASK SET ZDUEDATE = NULL, ZHASDUEDATE = 1" + where,
         FaultKind::kDueDate                                                                                                      },
        {"off the rule",
         "UPDATE ZGTASK SET ZCOMPLETED = 0, ZHASDUEDATE = 1, ZDUEDATE = 731332800.0, ZALERTREPEAT = 8192, "
         "ZALERTREPEATINTERVAL = 1, ZALERTREPEATDATA = '2'" +
             where,                                                                                         // 2024-03-05, a Tuesday
         FaultKind::kRepeat                                                                                    },
        {"open below completed",
         "UPDATE ZGTASK SET ZCOMPLETED = 1 WHERE Z_PK = (SELECT MIN(ZPARENTTASK) FROM ZGTASK WHERE ZREMOVED "
         "= 0 AND "
         "ZCOMPLETED = 0)",                                                                                 FaultKind::kCompletion},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        damage(row.sql);
        const Outcome outcome = checkAndRepair();
        EXPECT_TRUE(outcome.found.contains(row.kind));
        EXPECT_GT(outcome.mended, 0u);
        EXPECT_EQ(outcome.left, 0u);
    }
}

TEST_F(StoreCheckTest, BreaksACircleOfParents) {
    damage(
        "UPDATE ZGTASK SET ZPARENTTASK = 2 WHERE Z_PK = 1; UPDATE ZGTASK SET ZPARENTTASK = 1 WHERE Z_PK = "
        "2;");
    const Outcome outcome = checkAndRepair();
    EXPECT_TRUE(outcome.found.contains(FaultKind::kReference));
    EXPECT_EQ(outcome.left, 0u);
}

}  // namespace
}  // namespace corvane
