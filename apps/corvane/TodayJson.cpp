#include "apps/corvane/TodayJson.h"

#include <cmath>

#include <nlohmann/json.hpp>

#include "apps/host/ColorText.h"
#include "dates/Rfc3339.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/Truncation.h"

namespace corvane {
namespace {

using Json = nlohmann::ordered_json;

Json json(std::u16string_view text) { return utf8FromText(text); }

// A store's own identifier and a file's name may hold any bytes.
Json json(const std::string& bytes) { return json(textFromUtf8(bytes)); }

template <class Text>
Json json(const std::optional<Text>& text) {
    return text ? json(*text) : Json(nullptr);
}

Json json(Date date) { return json(stringOfRfc3339(date)); }

Json json(const std::optional<Color>& color) { return color ? Json(textOfColor(*color)) : Json(nullptr); }

const char* nameOf(DisplayMode mode) { return mode == DisplayMode::kCompact ? "compact" : "expanded"; }

// Whole points read as whole numbers.
Json points(double value) {
    if (std::trunc(value) != value) return value;
    return truncated<std::int64_t>(value);
}

Json rowJson(const WidgetRow& row) {
    return {
        {"taskid",   json(row.taskid)  },
        {"url",      json(row.url)     },
        {"title",    json(row.title)   },
        {"notes",    json(row.notes)   },
        {"time",     json(row.time)    },
        {"bullet",   json(row.bullet)  },
        {"priority", json(row.priority)},
        {"color",    json(row.color)   },
        {"alert",    row.alert         },
        {"repeat",   row.repeat        },
    };
}

Json rowsJson(const WidgetSnapshot& widget) {
    Json rows = Json::array();
    for (const WidgetRow& row : widget.rows) rows.push_back(rowJson(row));
    return rows;
}

}  // namespace

std::string todayJson(const WidgetSnapshot& widget, const TodayFacts& facts) {
    const bool isShowAllHidden = !widget.showAllTitle;
    const Size size = widget.preferredContentSize;
    const Json object = {
        {"now",                         json(facts.now)                                                    },
        {"validUntil",                  json(facts.validUntil)                                             },
        {"displayMode",                 nameOf(widget.displayMode)                                         },
        {"dueCount",                    widget.dueCount                                                    },
        {"maxTasksInWidget",            widget.maxTasksInWidget                                            },
        {"rows",                        rowsJson(widget)                                                   },
        {"footer",                      json(widget.footer)                                                },
        {"showAll",                     {{"hidden", isShowAllHidden}, {"title", json(widget.showAllTitle)}}},
        {"noTasks",
         {{"hidden", widget.noTasksHidden},
          {"wellDone", json(widget.wellDone)},
          {"noMoreTasks", json(widget.noMoreTasks)}}                                                       },
        {"preferredContentSize",        {{"width", points(size.width)}, {"height", points(size.height)}}   },
        {"largestAvailableDisplayMode", nameOf(widget.largestAvailableDisplayMode)                         },
        {"overdueCount",                facts.overdueCount                                                 },
        {"problem",                     json(facts.problem)                                                },
    };
    return object.dump();
}

}  // namespace corvane
