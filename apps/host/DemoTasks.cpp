#include "apps/host/DemoTasks.h"

namespace corvane {
namespace {

using enum DemoList;
using enum DemoTask::State;
using enum DemoTask::Rule;

constexpr int atTime(int hour, int minute) { return hour * 60 + minute; }

// One task after the other, without columns of blanks for what most of them lack.
// clang-format off
constexpr DemoTask kTasks[] = {
    {.list = kHome, .name = u"Pay the electricity bill", .day = -2, .priority = 50,
     .notes = u"Customer number is on the letter in the hall"},
    {.list = kHome, .name = u"Water the plants", .day = 0, .repeat = kRepeatDaily, .interval = 2,
     .notes = u"The fern wants more than the cactus"},
    {.list = kHome, .name = u"Prepare the birthday party", .day = 0, .minute = atTime(18, 30), .priority = 40,
     .alertBefore = 60},
    {.list = kHome, .depth = 1, .name = u"Bake the cake", .day = 0, .minute = atTime(15, 0),
     .notes = u"Chocolate, 24 cm"},
    {.list = kHome, .depth = 2, .name = u"Find grandmother's recipe", .state = kCompleted},
    {.list = kHome, .depth = 1, .name = u"Blow up balloons"},
    {.list = kHome, .depth = 1, .name = u"Invite the neighbours", .state = kCompleted},
    {.list = kHome, .name = u"Renew the passport", .day = 12, .priority = 30,
     .notes = u"Needs a new photograph\nOffice opens at 8"},
    {.list = kHome, .name = u"Repair the bicycle", .notes = u"Chain, brakes, rear light"},
    {.list = kHome, .depth = 1, .name = u"Order a chain"},
    {.list = kHome, .depth = 1, .name = u"Borrow the stand"},
    {.list = kHome, .name = u"Take the bins out", .day = 1, .minute = atTime(7, 0), .alertBefore = 30,
     .repeat = kRepeatWeekly},
    {.list = kHome, .name = u"Descale the kettle", .day = -9, .repeat = kRepeatMonthly},
    {.list = kHome, .name = u"Read the meters", .day = 25, .repeat = kRepeatMonthly, .rule = kLastWorkingDay},
    {.list = kHome, .name = u"Sort the photographs", .state = kCompleted},
    {.list = kHome, .name = u"Cancel the newspaper", .day = -20, .state = kCompleted},
    {.list = kHome, .name = u"Call the plumber", .day = -3, .state = kRemoved},

    {.list = kShopping, .name = u"Milk 🥛", .day = 0, .minute = atTime(14, 0), .priority = 50,
     .alertBefore = 15, .notes = u"Two litres"},
    {.list = kShopping, .name = u"Bread"},
    {.list = kShopping, .name = u"Coffee beans", .priority = 30},
    {.list = kShopping, .name = u"לקנות פרחים", .day = 0, .notes = u"אדומים"},
    {.list = kShopping, .name = u"Presents", .day = 6, .priority = 40},
    {.list = kShopping, .depth = 1, .name = u"A book for Ella"},
    {.list = kShopping, .depth = 1, .name = u"A kite for Tom", .state = kCompleted},
    {.list = kShopping, .name = u"Light bulbs", .state = kCompleted},
    {.list = kShopping, .name = u"Batteries", .state = kCompleted},

    {.list = kGarden, .name = u"Sow the tomatoes", .day = -1, .priority = 30,
     .notes = u"In the window, in the yellow pots"},
    {.list = kGarden, .name = u"Prune the apple tree", .day = 4},
    {.list = kGarden, .name = u"Winter fleece off the roses", .day = 9},
    {.list = kGarden, .name = u"Build a raised bed"},
    {.list = kGarden, .depth = 1, .name = u"Measure the corner"},
    {.list = kGarden, .depth = 1, .name = u"Get boards and screws"},
    {.list = kGarden, .name = u"Clean the greenhouse", .state = kCompleted},

    {.list = kOldPlans, .name = u"Learn to juggle", .day = -100, .priority = 50},
    {.list = kOldPlans, .name = u"Sell the tent"},

    {.list = kWork, .name = u"Send the quarterly report", .day = 0, .minute = atTime(17, 0), .priority = 50,
     .alertBefore = 120, .notes = u"Figures from Lena, then to the board"},
    {.list = kWork, .depth = 1, .name = u"Collect the figures", .day = -1, .state = kCompleted},
    {.list = kWork, .depth = 1, .name = u"Write the summary", .day = 0},
    {.list = kWork, .name = u"Stand-up", .day = 0, .minute = atTime(9, 30), .repeat = kRepeatWeekly,
     .rule = kMondayToFriday},
    {.list = kWork, .name = u"Prepare the workshop", .day = 3, .minute = atTime(10, 0), .priority = 40,
     .alertBefore = 1440},
    {.list = kWork, .depth = 1, .name = u"Book the room", .day = 1},
    {.list = kWork, .depth = 1, .name = u"Print the handouts", .day = 2},
    {.list = kWork, .name = u"Team lunch", .day = 8,
     .minute = atTime(12, 30), .repeat = kRepeatMonthly, .rule = kSecondThursday},
    {.list = kWork, .name = u"Expense claims", .day = -5, .priority = 30, .repeat = kRepeatMonthly,
     .notes = u"Train to Hamburg, hotel, two taxis; receipts are in the blue envelope"},
    {.list = kWork, .name = u"Back up the laptop", .day = 5, .repeat = kRepeatWeekly, .interval = 2},
    {.list = kWork, .name = u"Update the licence list", .state = kCompleted},

    {.list = kClients, .name = u"田中さんに電話する", .day = 0, .minute = atTime(11, 0), .priority = 40,
     .alertBefore = 5, .notes = u"About the second invoice & the <new> contract"},
    {.list = kClients, .name = u"Offer for the library", .day = 2, .priority = 30},
    {.list = kClients, .name = u"Invoice 2024-017", .day = 14},
    {.list = kClients, .name = u"Archive the old drawings", .state = kCompleted},

    {.list = kSomeday, .name = u"Learn the accordion", .day = -30},
    {.list = kSomeday, .name = u"Walk the coast path", .day = 0, .priority = 50},
    {.list = kSomeday, .name = u"Write a letter to the future"},

    {.list = kPrivate, .name = u"Dentist", .day = 1, .minute = atTime(8, 15), .priority = 40,
     .alertBefore = 60},
    {.list = kPrivate, .name = u"Go for a run", .day = -1, .repeat = kRepeatDaily, .interval = 3},
    {.list = kPrivate, .name = u"Ask for the day off", .day = 0},
    {.list = kPrivate, .name = u"Lend Max the drill"},

    {.list = kBirthdays, .name = u"Ella turns seven", .day = 0, .priority = 30, .repeat = kRepeatYearly},
    {.list = kBirthdays, .name = u"Uncle Robert", .day = 17, .repeat = kRepeatYearly},
    {.list = kBirthdays, .name = u"Lena", .day = 40, .repeat = kRepeatYearly},
};
// clang-format on

}  // namespace

std::span<const DemoTask> demoTasks() { return kTasks; }

}  // namespace corvane
