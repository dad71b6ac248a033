#include "platform/store/ManagedObjectID.h"

#include <charconv>

#include "platform/store/ModelDescription.h"

namespace corvane {

namespace {

constexpr std::string_view kScheme = "x-coredata://";

std::string capitalHexadecimal(std::int64_t number) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (auto rest = static_cast<std::uint64_t>(number); rest != 0; rest /= 16) {
        text.insert(text.begin(), kDigits[rest % 16]);
    }
    return text.empty() ? "0" : text;
}

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// Only the spelling that is written is read: "012" names no row.
std::optional<std::int64_t> positiveNumber(std::string_view digits) {
    if (digits.empty() || digits.front() < '1' || digits.front() > '9') return std::nullopt;
    std::int64_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

}  // namespace

std::string uriRepresentation(const ManagedObjectID& objectID, std::string_view storeUuid) {
    std::string uri(kScheme);
    if (!objectID.isTemporary) uri += storeUuid;
    uri += '/';
    if (objectID.entity) uri += objectID.entity->name();
    uri +=
        objectID.isTemporary ? "/t" + capitalHexadecimal(objectID.key) : "/p" + std::to_string(objectID.key);
    return uri;
}

std::optional<ManagedObjectID> objectIDFromUri(std::string_view uri, std::string_view storeUuid,
                                               const ManagedObjectModel& model) {
    if (storeUuid.empty()) return std::nullopt;
    if (!takePrefix(uri, kScheme) || !takePrefix(uri, storeUuid) || !takePrefix(uri, "/"))
        return std::nullopt;
    const std::size_t slash = uri.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const EntityDescription* entity = model.entity(uri.substr(0, slash));
    uri.remove_prefix(slash);
    if (!entity || !takePrefix(uri, "/p")) return std::nullopt;
    const std::optional<std::int64_t> key = positiveNumber(uri);
    if (!key) return std::nullopt;
    return ManagedObjectID{entity, *key, false};
}

}  // namespace corvane
