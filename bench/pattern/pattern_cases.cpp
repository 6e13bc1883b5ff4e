// The patterns are the kinds that scripts are full of: words, numbers, pairs, quotations, fields, trimming; and one or
// two for each construct of the grammar. The lines of the text are short, because std::regex recurses once a byte.

#include "pattern_cases.h"

#include <array>
#include <random>
#include <string_view>

namespace pattern::bench {

namespace {

constexpr std::size_t subjectSize = std::size_t{64} << 10;

constexpr std::array<std::string_view, 32> words{
    "the",     "lantern", "of",      "winter",  "and",  "a",       "garden",  "was",     "burning", "slowly", "in",
    "her",     "hands",   "when",    "morning", "came", "to",      "village", "without", "singing", "Anna",   "Mira",
    "Theodor", "said",    "nothing", "at",      "all",  "because", "rain",    "falling", "stone",   "needles"};

class TextMaker {
public:
    std::string make() {
        std::string text;
        while (text.size() < subjectSize) text += line() + (below(6) == 0 ? "  \n" : "\n");
        text += "the last needle\n";
        return text;
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    std::string word() { return std::string(words[below(words.size())]); }

    std::string number(std::size_t limit) { return std::to_string(below(limit)); }

    std::string prose() {
        std::string text = word();
        for (std::size_t i = 5 + below(8); i > 0; --i) text += (below(9) == 0 ? ", " : " ") + word();
        return text + ".";
    }

    std::string line() {
        switch (below(10)) {
        case 0: return "    " + word() + "_" + word() + " = " + number(5000);
        case 1: return "20" + number(90) + "-" + number(12) + "-" + number(30) + " " + prose();
        case 2: return word() + "." + word() + "@" + word() + ".example.com wrote: " + word();
        case 3: return word() + "," + number(100) + "," + word() + "," + number(100) + "," + word();
        case 4: return word() + " said \"" + prose() + "\" and left";
        case 5: return "<b>" + word() + "</b> <i>" + word() + " " + word() + "</i>";
        case 6: return "show(" + word() + ", " + number(800) + ") -- " + word();
        default: return prose();
        }
    }

    std::mt19937 random_{20240229};
};

} // namespace

const std::vector<Case>& cases() {
    static const std::vector<Case> all{
        {"rare literal", "the last needle", "the last needle"},
        {"frequent literal", "the", "the"},
        {"digits", "\\d+", "%d+"},
        {"words", "[a-z]+", "[a-z]+"},
        {"capitalised words", "[A-Z][a-z]*", "[A-Z][a-z]*"},
        {"words in a group", "(\\w+)", "([%w_]+)"},
        {"assignments", "(\\w+)\\s*=\\s*(\\d+)", "([%w_]+)%s*=%s*(%d+)"},
        {"dates", "(\\d+)-(\\d+)-(\\d+)", "(%d+)-(%d+)-(%d+)"},
        {"calls", "[A-Za-z_]\\w*\\(", "[A-Za-z_][%w_]*%("},
        {"quotations", "\"[^\"]*\"", "\"[^\"]*\""},
        {"lazy quotations", "\"(.*?)\"", "\"(.-)\""},
        {"fields", "[^,\\n]+", "[^,\n]+"},
        {"blanks at line ends", "[ \\t]+\\n", "[ \t]+\n"},
        {"addresses", "[\\w.]+@[\\w.]+\\.com", "[%w_.]+@[%w_.]+%.com"},
        {"tags with back reference", "<(\\w+)>.*?</\\1>", "<(%w+)>.-</%1>"},
        {"any byte between", "a.e", "a.e"},
        {"single bytes", "[aeiou]", "[aeiou]"},
        {"empty matches", "z*", "z*"},
        {"alternatives", "lantern|garden|village|stone"},
        {"alternatives in a group", "(Anna|Mira|Theodor) (said|was|came)"},
        {"ignoring case", "theodor", nullptr, true},
        {"word boundaries", "\\b\\w{5}\\b"},
        {"looking ahead", "\\w+(?=,)"},
        {"loop over a group", "(?:[a-z]+\\.)+com"},
        {"loop over alternatives", "(?:the|and|of| )+"},
    };
    return all;
}

const std::string& subject() {
    static const std::string text = TextMaker().make();
    return text;
}

} // namespace pattern::bench
