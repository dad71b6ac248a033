#include "model/GTask.h"

#include <sstream>

#include <cctz/civil_time.h>

#include "model/GList.h"
#include "model/ModificationStamp.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr std::u16string_view kNone = u"(null)";

// "2024-03-05 12:00:00 +0000".
std::u16string description(std::optional<Date> date) {
    if (!date) return std::u16string(kNone);
    std::ostringstream text;
    text << Calendar(cctz::utc_time_zone(), kSunday).civilSecond(*date) << " +0000";
    std::u16string result = textFromUtf8(text.str());
    if (const std::size_t separator = result.find(u'T'); separator != result.npos) result[separator] = u' ';
    return result;
}

std::u16string description(std::optional<std::u16string_view> text) {
    return std::u16string(text.value_or(kNone));
}

}  // namespace

GList* GTask::list() const { return related<"list", GList>(); }
void GTask::setList(GList* value) { set<"list">(value); }

Date GTask::lastUpdated() const { return dateOfStamp(lastModified()); }

void GTask::setLastUpdated(Date value) { setLastModified(stampOfDate(value)); }

void GTask::updateLastModified() {
    const Date stamp = lastUpdated();
    setLastUpdated(stamp < kDistantFuture ? kDistantFuture : stamp + TimeInterval(1));
}

std::u16string GTask::desc() const {
    const GTask* parent = parentTask();
    const auto unsignedOrder = static_cast<std::uint32_t>(displayOrder());
    std::u16string text = u"(";
    text += parent ? description(parent->name()) : u"-";
    text += u")" + textFromUtf8(std::to_string(unsignedOrder)) + u".";
    text += removed() ? u"*(" : u" (";
    text += completed() ? u"v)" : u" )";
    text += description(name()) + u"-" + description(dueDate()) + u" " + description(lastUpdated()) + u"[" +
            description(id()) + u"]";
    return text;
}

}  // namespace corvane
