#include "apps/corvane/LastListing.h"

#include <filesystem>
#include <span>
#include <system_error>

#include <nlohmann/json.hpp>

#include "platform/foundation/Environment.h"
#include "platform/foundation/FileContents.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

using Json = nlohmann::ordered_json;
using Path = std::filesystem::path;

constexpr std::size_t kMostContainers = 20;

Path listingFile() { return userStateDirectory() / "corvane" / "last-listing"; }

std::string containerKey() {
    std::error_code error;
    const Path directory = Environment::current().containerDirectory.value_or(Path());
    const Path whole = std::filesystem::weakly_canonical(directory, error);
    return (error ? directory : whole).string();
}

// What somebody damaged is as good as nothing.
Json readListings() {
    constexpr std::size_t kMostBytes = 64'000'000;
    constexpr bool kWithExceptions = true;
    const auto contents = contentsOfFile(listingFile(), kMostBytes);
    const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&contents);
    if (!bytes) return Json::object();
    Json listings = Json::parse(*bytes, nullptr, !kWithExceptions);
    return listings.is_object() ? listings : Json::object();
}

}  // namespace

LastListing LastListing::ofContainer() {
    LastListing listing;
    const Json listings = readListings();
    const auto entry = listings.find(containerKey());
    if (entry == listings.end() || !entry->is_array()) return listing;
    for (const Json& identifier : *entry) {
        listing.identifiers_.push_back(identifier.is_string() ? identifier.get<std::string>() : "");
    }
    return listing;
}

void LastListing::remember(const std::vector<std::string>& identifiers) {
    if (!makePrivateDirectories(listingFile().parent_path())) return;
    Json listings = readListings();
    listings.erase(containerKey());
    while (listings.size() >= kMostContainers) listings.erase(listings.begin());
    listings[containerKey()] = identifiers;
    const std::string text = listings.dump(-1, ' ', false, Json::error_handler_t::replace);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    static_cast<void>(
        writeFileAtomically(listingFile(), std::span(bytes, text.size()), FileAccess::kOwnerOnly));
}

std::optional<std::string> LastListing::identifier(std::size_t number) const {
    if (number < 1 || number > identifiers_.size()) return std::nullopt;
    return identifiers_[number - 1];
}

}  // namespace corvane
