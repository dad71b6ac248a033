// The text of a predicate, in one spelling.
#include <charconv>
#include <cstdio>
#include <string>

#include "platform/store/ManagedObject.h"
#include "platform/store/Predicate.h"
#include "platform/store/PredicateNode.h"

namespace corvane {

namespace {

std::u16string widened(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

std::string realText(double real) {
    char digits[32];
    const auto [end, status] = std::to_chars(digits, digits + sizeof digits, real);
    std::string text(digits, status == std::errc() ? end : digits);
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

bool isLoneSurrogate(std::u16string_view text, std::size_t i) {
    const auto isLead = [text](std::size_t at) { return at < text.size() && (text[at] & 0xFC00) == 0xD800; };
    const auto isTrail = [text](std::size_t at) { return at < text.size() && (text[at] & 0xFC00) == 0xDC00; };
    if (isLead(i)) return !isTrail(i + 1);
    return isTrail(i) && (i == 0 || !isLead(i - 1));
}

std::u16string escapedUnit(std::u16string_view text, std::size_t i) {
    const char16_t unit = text[i];
    if (unit == u'"' || unit == u'\\') return {u'\\', unit};
    if (unit == u'\n') return u"\\n";
    if (unit == u'\t') return u"\\t";
    if (unit == u'\r') return u"\\r";
    if (unit >= u' ' && unit != 0x7F && !isLoneSurrogate(text, i)) return {unit};
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(unit));
    return widened(escape);
}

std::u16string quotedText(std::u16string_view text) {
    std::u16string quoted = u"\"";
    for (std::size_t i = 0; i < text.size(); ++i) quoted += escapedUnit(text, i);
    return quoted + u"\"";
}

// Objects and bytes have no literal: their texts are for people.
struct ValueText {
    std::u16string operator()(std::monostate) const { return u"nil"; }
    std::u16string operator()(bool flag) const { return flag ? u"YES" : u"NO"; }
    std::u16string operator()(std::int64_t integer) const { return widened(std::to_string(integer)); }
    std::u16string operator()(double real) const { return widened(realText(real)); }
    std::u16string operator()(Date date) const {
        return widened("CAST(" + realText(date.time_since_epoch().count()) + ", \"NSDate\")");
    }
    std::u16string operator()(const std::u16string& text) const { return quotedText(text); }
    std::u16string operator()(const Bytes& bytes) const {
        return widened("<" + std::to_string(bytes.size()) + " bytes>");
    }
    std::u16string operator()(const ManagedObject* object) const {
        const ManagedObjectID objectID = object->objectID();
        const char* const marker = objectID.isTemporary ? "/t" : "/p";
        return widened("<" + std::string(objectID.entity->name()) + marker + std::to_string(objectID.key) +
                       ">");
    }
};

std::u16string placeholderText(PlaceholderExpression::Conversion conversion) {
    switch (conversion) {
        case PlaceholderExpression::Conversion::kObject:
            return u"%@";
        case PlaceholderExpression::Conversion::kKeyPath:
            return u"%K";
        case PlaceholderExpression::Conversion::kInteger:
            return u"%ld";
        case PlaceholderExpression::Conversion::kReal:
            return u"%f";
    }
    return {};
}

std::u16string expressionText(const Expression& expression);

struct ExpressionText {
    std::u16string operator()(const ConstantExpression& constant) const {
        return std::visit(ValueText(), constant.value);
    }
    std::u16string operator()(const VariableExpression& variable) const {
        return u"$" + widened(variable.name);
    }
    std::u16string operator()(const PlaceholderExpression& placeholder) const {
        return placeholderText(placeholder.conversion);
    }
    std::u16string operator()(const KeyPath& path) const { return textFromKeyPath(path); }
    std::u16string operator()(const ListExpression& list) const {
        std::u16string text = u"{";
        for (const Expression& element : list.elements) {
            if (text.size() > 1) text += u", ";
            text += expressionText(element);
        }
        return text + u"}";
    }
};

std::u16string expressionText(const Expression& expression) {
    return std::visit(ExpressionText(), expression.content);
}

std::u16string_view quantifierText(Quantifier quantifier) {
    switch (quantifier) {
        case Quantifier::kPlain:
            return u"";
        case Quantifier::kAny:
            return u"ANY ";
        case Quantifier::kAll:
            return u"ALL ";
        case Quantifier::kNone:
            return u"NONE ";
    }
    return {};
}

std::u16string optionsText(TextOptions options) {
    if (!options.any()) return {};
    std::u16string text = u"[";
    if (options.ignoresCase) text += u'c';
    if (options.ignoresDiacritics) text += u'd';
    return text + u"]";
}

std::u16string nodeText(const PredicateNode& node);

// Compounds are put in parentheses wherever they stand inside something.
std::u16string operandText(const PredicateNode& node) {
    return node.get<Compound>() ? u"(" + nodeText(node) + u")" : nodeText(node);
}

struct NodeText {
    std::u16string operator()(bool value) const { return value ? u"TRUEPREDICATE" : u"FALSEPREDICATE"; }
    std::u16string operator()(const Negation& negation) const {
        return u"NOT (" + nodeText(*negation.operand) + u")";
    }
    std::u16string operator()(const Compound& compound) const {
        const std::u16string_view separator = compound.kind == Compound::Kind::kAnd ? u" AND " : u" OR ";
        std::u16string text;
        for (const PredicateNodePointer& operand : compound.operands) {
            if (!text.empty()) text += separator;
            text += operandText(*operand);
        }
        return text;
    }
    std::u16string operator()(const Comparison& comparison) const {
        std::u16string text(quantifierText(comparison.quantifier));
        text.append(expressionText(comparison.left)).append(u" ").append(namesOf(comparison.op).text);
        return text.append(optionsText(comparison.options))
            .append(u" ")
            .append(expressionText(comparison.right));
    }
};

std::u16string nodeText(const PredicateNode& node) { return std::visit(NodeText(), node.content); }

}  // namespace

std::u16string Predicate::predicateFormat() const { return nodeText(*root_); }

}  // namespace corvane
