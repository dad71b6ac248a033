#include "apps/host/HandOverUrl.h"

#include <algorithm>
#include <optional>

#include "model/CorvaneModel.h"
#include "model/GTask.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/ManagedObjectID.h"
#include "platform/store/ModelDescription.h"
#include "text/CharacterSets.h"
#include "text/UrlEncoding.h"

namespace corvane {
namespace {

constexpr std::u16string_view kStart = u"velmor-plorixmax://localhost/";
constexpr std::u16string_view kTaskParameter = u"today?taskid=";
// Several times what the widget writes at its longest.
constexpr std::size_t kMostUnits = 512;

std::u16string notOurs() { return localizedString("This link does not belong to Corvane Today."); }
std::u16string unknownPlace() { return localizedString("This link leads nowhere in Corvane Today."); }
std::u16string noTask() { return localizedString("This link names no task."); }

bool isPlainAscii(char16_t unit) { return unit > u' ' && unit < 0x7F; }

bool startsWithOurs(std::u16string_view url) {
    return url.size() >= kStart.size() &&
           std::ranges::equal(url.substr(0, kStart.size()), kStart, {}, asciiLowercase);
}

bool isUuid(std::string_view text) {
    constexpr std::string_view kShape = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return std::ranges::equal(text, kShape, [](char c, char shape) {
        return shape == '-' ? c == '-' : hexDigitValue(static_cast<unsigned char>(c)) != kNoDigit;
    });
}

// The store's own reader decides about the rest; here only the store is unknown yet.
bool isTaskUri(std::string_view uri) {
    constexpr std::string_view kObjectScheme = "x-coredata://";
    if (!uri.starts_with(kObjectScheme)) return false;
    const std::string_view rest = uri.substr(kObjectScheme.size());
    const std::string_view uuid = rest.substr(0, rest.find('/'));
    if (!isUuid(uuid)) return false;
    const std::optional<ManagedObjectID> objectID = objectIDFromUri(uri, uuid, corvaneModel());
    return objectID && objectID->entity->name() == GTask::kEntityName;
}

std::optional<std::string> taskidFromParameter(std::u16string_view value) {
    if (value.find_first_of(u"&=?#+") != std::u16string_view::npos) return std::nullopt;
    const std::optional<std::u16string> decoded = stringByURLDecodingStringParameter(value);
    if (!decoded || !std::ranges::all_of(*decoded, isPlainAscii)) return std::nullopt;
    std::string uri = utf8FromText(*decoded);
    return isTaskUri(uri) ? std::optional(std::move(uri)) : std::nullopt;
}

}  // namespace

std::variant<HandOverUrl, std::u16string> handOverFromUrl(std::u16string_view url) {
    if (url.size() > kMostUnits || !std::ranges::all_of(url, isPlainAscii) || !startsWithOurs(url)) {
        return notOurs();
    }
    const std::u16string_view place = url.substr(kStart.size());
    if (place == u"today") return ShowToday();
    if (place == u"addtask") return ShowAddTask();
    if (!place.starts_with(kTaskParameter)) return unknownPlace();
    std::optional<std::string> taskid = taskidFromParameter(place.substr(kTaskParameter.size()));
    if (!taskid) return noTask();
    return ShowTask{std::move(*taskid)};
}

}  // namespace corvane
