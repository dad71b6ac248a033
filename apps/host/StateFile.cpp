#include "apps/host/StateFile.h"

#include <filesystem>
#include <utility>

#include "platform/foundation/FileContents.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

constexpr std::size_t kMostStores = 20;

std::filesystem::path stateDirectory() { return userStateDirectory() / "corvane"; }

PropertyList::Dictionary readFile(const std::string& name) {
    constexpr std::size_t kMostBytes = 8'000'000;
    const auto contents = contentsOfFile(stateDirectory() / name, kMostBytes);
    const auto* bytes = std::get_if<Bytes>(&contents);
    const auto list = bytes ? propertyListFromData(*bytes) : std::nullopt;
    const auto* entries = list ? list->get<PropertyList::Dictionary>() : nullptr;
    return entries ? *entries : PropertyList::Dictionary();
}

}  // namespace

PropertyList::Dictionary StateFile::read() const {
    const PropertyList::Dictionary entries = readFile(name_);
    const auto found = entries.find(store_);
    const auto* entry = found == entries.end() ? nullptr : found->second.get<PropertyList::Dictionary>();
    return entry ? *entry : PropertyList::Dictionary();
}

bool StateFile::write(PropertyList::Dictionary entry) const {
    if (!makePrivateDirectories(stateDirectory())) return false;
    PropertyList::Dictionary entries = readFile(name_);
    entries.erase(store_);
    while (entries.size() >= kMostStores) entries.erase(entries.begin());
    if (!entry.empty()) entries[store_] = {std::move(entry)};
    return !writeFileAtomically(stateDirectory() / name_, binaryDataFromPropertyList({std::move(entries)}),
                                FileAccess::kOwnerOnly);
}

PropertyList stateOfDate(Date date) { return {date.time_since_epoch().count()}; }

std::optional<Date> dateOfState(const PropertyList& entry) {
    const std::optional<double> seconds = entry.number();
    return seconds ? std::optional(Date(TimeInterval(*seconds))) : std::nullopt;
}

std::optional<Date> dateInState(const PropertyList& entry, std::string_view key) {
    const PropertyList* found = entry.find(key);
    return found ? dateOfState(*found) : std::nullopt;
}

}  // namespace corvane
