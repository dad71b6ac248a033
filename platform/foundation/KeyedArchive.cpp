#include "platform/foundation/KeyedArchive.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view kArchiver = "NSKeyedArchiver";
constexpr std::int64_t kArchiveVersion = 100'000;
constexpr const char* kColorClass = "UIColor";
constexpr std::int64_t kRgbComponents = 4;
constexpr std::int64_t kWhiteComponents = 2;
constexpr std::int64_t kRgbColorSpace = 2;
constexpr std::int64_t kWhiteColorSpace = 4;

// One way of writing a colour: its keys, and where it keeps the printed components.
struct FormKeys {
    Color::Form form;
    std::vector<const char*> components;
    const char* printed;
};

const FormKeys& keysOfForm(Color::Form form) {
    static const FormKeys rgb{
        Color::Form::kRgb, {"UIRed", "UIGreen", "UIBlue"},
         "NSRGB"
    };
    static const FormKeys white{Color::Form::kWhite, {"UIWhite"}, "NSWhite"};
    return form == Color::Form::kWhite ? white : rgb;
}

struct SystemColor {
    std::string_view name;
    Color color;
};
constexpr SystemColor kSystemColors[] = {
    {"systemRedColor",                Color::systemRed()               },
    {"tertiarySystemBackgroundColor", Color::tertiarySystemBackground()},
};

// The components in the order of the form's keys, alpha last.
std::vector<double> componentsOfColor(const Color& color) {
    if (color.form == Color::Form::kWhite) return {color.red, color.alpha};
    return {color.red, color.green, color.blue, color.alpha};
}

Color colorOfComponents(Color::Form form, std::span<const double> components) {
    if (form == Color::Form::kWhite) return Color::white(components[0], components[1]);
    return Color::rgb(components[0], components[1], components[2], components[3]);
}

// An archive while it is read: the object table and the root object.
class Archive {
  public:
    static std::optional<Archive> read(std::span<const std::uint8_t> data) {
        std::optional<PropertyList> list = propertyListFromData(data);
        if (!list) return std::nullopt;
        Archive archive(*std::move(list));
        if (!archive.isKeyedArchive() || archive.root() == nullptr) return std::nullopt;
        return archive;
    }

    const PropertyList* root() const {
        const PropertyList* top = list_.find("$top");
        const PropertyList* reference = top == nullptr ? nullptr : top->find("root");
        return reference == nullptr ? nullptr : resolved(*reference);
    }

    /// The value under a key of an object; a reference is followed once, never a chain of them.
    const PropertyList* value(const PropertyList& object, std::string_view key) const {
        const PropertyList* found = object.find(key);
        return found == nullptr ? nullptr : resolved(*found);
    }

    /// Whether the object's class is `name` or one below it.
    bool isKindOfClass(const PropertyList& object, const std::string& name) const {
        const PropertyList* description = value(object, "$class");
        if (description == nullptr) return false;
        const PropertyList named{name};
        const PropertyList* className = description->find("$classname");
        if (className != nullptr && *className == named) return true;
        const PropertyList* classes = description->find("$classes");
        const auto* names = classes == nullptr ? nullptr : classes->get<PropertyList::Array>();
        return names != nullptr && std::ranges::find(*names, named) != names->end();
    }

  private:
    explicit Archive(PropertyList list) : list_(std::move(list)) {}

    bool isKeyedArchive() const {
        const PropertyList* archiver = list_.find("$archiver");
        const auto* name = archiver == nullptr ? nullptr : archiver->get<std::string>();
        return name != nullptr && *name == kArchiver;
    }

    // In XML a reference is a dictionary of its own.
    static std::optional<std::uint64_t> indexOfReference(const PropertyList& value) {
        if (const auto* uid = value.get<PropertyList::Uid>()) return uid->value;
        const PropertyList* index = value.find("CF$UID");
        const auto* number = index == nullptr ? nullptr : index->get<std::int64_t>();
        if (number == nullptr || *number < 0) return std::nullopt;
        return static_cast<std::uint64_t>(*number);
    }

    const PropertyList* resolved(const PropertyList& value) const {
        const std::optional<std::uint64_t> index = indexOfReference(value);
        if (!index) return &value;
        const PropertyList* table = list_.find("$objects");
        const auto* objects = table == nullptr ? nullptr : table->get<PropertyList::Array>();
        if (objects == nullptr || *index >= objects->size()) return nullptr;
        return &(*objects)[*index];
    }

    PropertyList list_;
};

// Reads the colour object of an archive.
class ColorDecoder {
  public:
    ColorDecoder(const Archive& archive, const PropertyList& object) : archive_(archive), object_(object) {}

    std::optional<Color> color() const {
        const std::optional<Color> system = systemColor();
        std::optional<Color> color = componentColor();
        if (color && system) color->system = system->system;
        return color ? color : system;
    }

  private:
    std::optional<Color> systemColor() const {
        const PropertyList* value = archive_.value(object_, "UISystemColorName");
        const auto* name = value == nullptr ? nullptr : value->get<std::string>();
        if (name == nullptr) return std::nullopt;
        const auto* found = std::ranges::find(kSystemColors, *name, &SystemColor::name);
        return found == std::end(kSystemColors) ? std::nullopt : std::optional(found->color);
    }

    // The form that the count names first; the printed components only when no form has its keys.
    std::optional<Color> componentColor() const {
        const bool isWhite = count() == kWhiteComponents;
        const FormKeys& first = keysOfForm(isWhite ? Color::Form::kWhite : Color::Form::kRgb);
        const FormKeys& second = keysOfForm(isWhite ? Color::Form::kRgb : Color::Form::kWhite);
        for (const FormKeys* keys : {&first, &second}) {
            if (std::optional<Color> color = colorOfKeys(*keys)) return color;
        }
        for (const FormKeys* keys : {&first, &second}) {
            if (std::optional<Color> color = colorOfPrinted(*keys)) return color;
        }
        return std::nullopt;
    }

    std::optional<std::int64_t> count() const {
        const PropertyList* value = archive_.value(object_, "UIColorComponentCount");
        return value == nullptr ? std::nullopt : value->integer();
    }

    std::optional<double> finiteNumber(const std::string& key) const {
        const PropertyList* value = archive_.value(object_, key);
        const std::optional<double> number = value == nullptr ? std::nullopt : value->number();
        return number && std::isfinite(*number) ? number : std::nullopt;
    }

    std::optional<double> component(const std::string& key) const {
        const std::optional<double> precise = finiteNumber(key + "-Double");
        return precise ? precise : finiteNumber(key);
    }

    std::optional<Color> colorOfKeys(const FormKeys& keys) const {
        std::vector<double> components;
        for (const char* key : keys.components) {
            const std::optional<double> number = component(key);
            if (!number) return std::nullopt;
            components.push_back(*number);
        }
        components.push_back(component("UIAlpha").value_or(1));
        return colorOfComponents(keys.form, components);
    }

    std::optional<Color> colorOfPrinted(const FormKeys& keys) const {
        const PropertyList* value = archive_.value(object_, keys.printed);
        if (value == nullptr) return std::nullopt;
        std::string text;
        if (const auto* bytes = value->get<Bytes>()) text.assign(bytes->begin(), bytes->end());
        if (const auto* string = value->get<std::string>()) text = *string;
        std::vector<double> components = numbersOfText(text);
        if (components.size() == keys.components.size()) components.push_back(1);
        if (components.size() != keys.components.size() + 1) return std::nullopt;
        return colorOfComponents(keys.form, components);
    }

    // The numbers between blanks; none at all when anything else but a final NUL stands there.
    static std::vector<double> numbersOfText(std::string_view text) {
        std::vector<double> numbers;
        text = text.substr(0, text.find('\0'));
        for (;;) {
            text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
            if (text.empty()) return numbers;
            double number = 0;
            const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
            if (result.ec != std::errc() || !std::isfinite(number)) return {};
            numbers.push_back(number);
            text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
        }
    }

    const Archive& archive_;
    const PropertyList& object_;
};

PropertyList reference(std::uint64_t index) { return {PropertyList::Uid{index}}; }

// The value that single precision keeps of a component.
double inSinglePrecision(double component) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<double>(static_cast<float>(std::clamp(component, -kLargest, kLargest)));
}

// The components for readers on the desktop: at most three significant digits, alpha only when it is not 1.
Bytes printedComponents(std::span<const double> components) {
    constexpr int kSignificantDigits = 3;
    const bool isOpaque = components.back() == 1;
    std::string text;
    for (const double component : components.first(components.size() - (isOpaque ? 1 : 0))) {
        char digits[32];
        const auto result = std::to_chars(std::begin(digits), std::end(digits), component,
                                          std::chars_format::general, kSignificantDigits);
        if (!text.empty()) text.push_back(' ');
        text.append(digits, result.ptr);
    }
    return {text.begin(), text.end()};
}

PropertyList::Dictionary objectOfColor(const Color& color) {
    const bool isWhite = color.form == Color::Form::kWhite;
    const FormKeys& keys = keysOfForm(color.form);
    std::vector<double> components = componentsOfColor(color);
    for (double& component : components) component = std::isfinite(component) ? component : 0;
    std::vector<const char*> names = keys.components;
    names.push_back("UIAlpha");
    PropertyList::Dictionary object;
    for (std::size_t i = 0; i < names.size(); ++i) {
        object[names[i]] = {inSinglePrecision(components[i])};
        object[std::string(names[i]) + "-Double"] = {components[i]};
    }
    object["UIColorComponentCount"] = {isWhite ? kWhiteComponents : kRgbComponents};
    object["NSColorSpace"] = {isWhite ? kWhiteColorSpace : kRgbColorSpace};
    object[keys.printed] = {printedComponents(components)};
    return object;
}

PropertyList colorClass() {
    const PropertyList::Array classes = {{std::string(kColorClass)}, {std::string("NSObject")}};
    return {
        PropertyList::Dictionary{{"$classname", {std::string(kColorClass)}}, {"$classes", {classes}}}
    };
}

std::optional<Color> unarchivedColor(std::span<const std::uint8_t> data, bool requiresClass) {
    const std::optional<Archive> archive = Archive::read(data);
    if (!archive) return std::nullopt;
    const PropertyList& root = *archive->root();
    if (requiresClass && !archive->isKindOfClass(root, kColorClass)) return std::nullopt;
    return ColorDecoder(*archive, root).color();
}

}  // namespace

Bytes archivedDataWithColor(const Color& color) {
    PropertyList::Dictionary object = objectOfColor(color);
    object["$class"] = reference(2);
    PropertyList::Array objects = {{std::string("$null")}, {}, colorClass()};
    const auto* system = std::ranges::find_if(
        kSystemColors, [&color](const SystemColor& named) { return named.color.system == color.system; });
    if (system != std::end(kSystemColors)) {
        object["UISystemColorName"] = reference(objects.size());
        objects.push_back({std::string(system->name)});
    }
    objects[1] = {std::move(object)};
    const PropertyList top{PropertyList::Dictionary{{"root", reference(1)}}};
    return binaryDataFromPropertyList({
        PropertyList::Dictionary{{"$version", {kArchiveVersion}},
                                 {"$archiver", {std::string(kArchiver)}},
                                 {"$top", top},
                                 {"$objects", {objects}}}
    });
}

std::optional<Color> unarchivedColorSecurely(std::span<const std::uint8_t> data) {
    constexpr bool kRequiresClass = true;
    return unarchivedColor(data, kRequiresClass);
}

std::optional<Color> unarchivedColorLegacy(std::span<const std::uint8_t> data) {
    constexpr bool kRequiresClass = false;
    return unarchivedColor(data, kRequiresClass);
}

}  // namespace corvane
