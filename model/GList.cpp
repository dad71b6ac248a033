#include "model/GList.h"

#include <algorithm>

#include "model/ColorTransformer.h"
#include "model/GUser.h"
#include "model/ModificationStamp.h"

namespace corvane {
namespace {

constexpr std::int32_t kTasksOrderBits = 7;
constexpr std::int32_t kDefaultListBit = 8;
constexpr std::int32_t kUserChangedNameBit = 16;

constexpr std::int32_t withBit(std::int32_t properties, std::int32_t bit, bool isSet) {
    return isSet ? properties | bit : properties & ~bit;
}

std::shared_ptr<const ValueTransformer> colorTransformer() {
    if (!ValueTransformer::forName(ColorTransformer::kName)) ColorTransformer::registerTransformer();
    return ValueTransformer::forName(ColorTransformer::kName);
}

std::optional<Color> decodedColor(const Bytes& data) {
    const std::any object = colorTransformer()->reverseTransformedValue(data);
    const auto* color = std::any_cast<Color>(&object);
    return color ? std::optional(*color) : std::nullopt;
}

}  // namespace

std::optional<Color> GList::color() const {
    const Bytes* data = get<"color">();
    if (!data) return std::nullopt;
    if (!decodedColor_ || decodedColor_->data != *data) {
        decodedColor_ = DecodedColor{*data, corvane::decodedColor(*data)};
    }
    return decodedColor_->color;
}

void GList::setColor(const std::optional<Color>& value) {
    if (color() == value) return;
    const std::optional<Bytes> data = value ? colorTransformer()->transformedValue(*value) : std::nullopt;
    set<"color">(data ? &*data : nullptr);
}

GUser* GList::user() const { return related<"user", GUser>(); }
void GList::setUser(GUser* value) { set<"user">(value); }

std::int16_t GList::tasksOrder() const { return static_cast<std::int16_t>(properties() & kTasksOrderBits); }

void GList::setTasksOrder(std::int16_t value) { setProperties((properties() & ~kTasksOrderBits) | value); }

bool GList::defaultList() const { return (properties() & kDefaultListBit) != 0; }

void GList::setDefaultList(bool value) { setProperties(withBit(properties(), kDefaultListBit, value)); }

bool GList::userChangedName() const { return (properties() & kUserChangedNameBit) != 0; }

void GList::setUserChangedName(bool value) {
    setProperties(withBit(properties(), kUserChangedNameBit, value));
}

Date GList::lastUpdated() const { return dateOfStamp(lastModified()); }

void GList::setLastUpdated(Date value) { setLastModified(stampOfDate(value)); }

// Told of fresh values as well; those leave the cached tasks as stale as any change does.
void GList::didTurnIntoFault() {
    if (!isFault()) return;
    decodedColor_.reset();
    orderedAllTasks_.reset();
    useCachedOrderedAllTasks_ = false;
}

}  // namespace corvane
