// Escaping, encoding and linking of 1 MB of UTF-16 text in bytes per second, beside a plain copy and a search
// of the entity table by halves, unit by unit.
#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "text/HtmlEscaping.h"
#include "text/HtmlText.h"
#include "text/UrlEncoding.h"

namespace corvane {
namespace {

constexpr std::size_t kUnits = 1 << 19;

// Letters with `rare` strewn in, on average `perMille` of a thousand units.
std::u16string textWith(std::u16string_view rare, unsigned perMille) {
    std::mt19937 random(1);
    std::u16string text;
    while (text.size() < kUnits) {
        const bool isRare = random() % 1000 < perMille;
        text += isRare ? rare[random() % rare.size()] : static_cast<char16_t>(u'a' + random() % 26);
    }
    return text;
}

std::u16string htmlText(const benchmark::State& state) {
    return textWith(u"<>&\"'", static_cast<unsigned>(state.range(0)));
}

// Reports the bytes of the input.
template <typename Operation>
void measure(benchmark::State& state, const std::u16string& text, Operation operation) {
    for (auto _ : state) benchmark::DoNotOptimize(operation(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size() * sizeof(char16_t)));
}

void copy(benchmark::State& state) {
    std::vector<char16_t> target(kUnits);
    measure(state, textWith(u"&", 10), [&](const std::u16string& text) {
        std::memcpy(target.data(), text.data(), text.size() * sizeof(char16_t));
        benchmark::ClobberMemory();
        return target.data();
    });
}
BENCHMARK(copy);

void copyToNewString(benchmark::State& state) {
    measure(state, textWith(u"&", 10), [](const std::u16string& text) { return std::u16string(text); });
}
BENCHMARK(copyToNewString);

void escapeByHalving(benchmark::State& state) {
    measure(state, htmlText(state), [](std::u16string_view text) {
        const auto entities = kSpecialHtmlEntities.entities();
        std::u16string result;
        result.reserve(2 * text.size());
        for (const char16_t unit : text) {
            const auto found = std::ranges::lower_bound(entities, unit, {}, &HtmlEntity::unit);
            if (found != entities.end() && found->unit == unit) {
                result += found->reference;
            } else {
                result += unit;
            }
        }
        return result;
    });
}
BENCHMARK(escapeByHalving)->ArgName("perMille")->Arg(10)->Arg(100);

void escapeForHTML(benchmark::State& state) { measure(state, htmlText(state), gtm_stringByEscapingForHTML); }
BENCHMARK(escapeForHTML)->ArgName("perMille")->Arg(0)->Arg(10)->Arg(100);

void escapeForAsciiHTML(benchmark::State& state) {
    measure(state, htmlText(state), gtm_stringByEscapingForAsciiHTML);
}
BENCHMARK(escapeForAsciiHTML)->ArgName("perMille")->Arg(10);

void unescape(benchmark::State& state) {
    measure(state, gtm_stringByEscapingForHTML(htmlText(state)), gtm_stringByUnescapingFromHTML);
}
BENCHMARK(unescape)->ArgName("perMille")->Arg(10)->Arg(100);

void percentEncode(benchmark::State& state) {
    measure(state, textWith(u"&=/ \u00e9", static_cast<unsigned>(state.range(0))),
            stringByURLEncodingStringParameter);
}
BENCHMARK(percentEncode)->ArgName("perMille")->Arg(10)->Arg(300);

void percentDecode(benchmark::State& state) {
    const std::u16string text = textWith(u"&=/ \u00e9", static_cast<unsigned>(state.range(0)));
    measure(state, stringByURLEncodingStringParameter(text), stringByURLDecodingStringParameter);
}
BENCHMARK(percentDecode)->ArgName("perMille")->Arg(10)->Arg(300);

void linkify(benchmark::State& state) {
    std::u16string text;
    while (text.size() < kUnits)
        text += u"Minutes and slides are at https://example.org/board/2024?item=3 as always. ";
    measure(state, text, stringByLinkifyingURLs);
}
BENCHMARK(linkify);

void convertToPlainText(benchmark::State& state) {
    std::u16string text;
    while (text.size() < kUnits)
        text += u"<p>Buy <b>milk</b> &amp; bread,\n then  call <a href=\"x\">home</a></p>\n";
    measure(state, text, stringByConvertingHTMLToPlainText);
}
BENCHMARK(convertToPlainText);

}  // namespace
}  // namespace corvane
