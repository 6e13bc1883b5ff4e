// Source text to prepared lines.
//
// The text is cut once into logical lines: a line feed or a `;` ends one, unless a bracket or a string is still open.
// Each is cut into tokens, classified by its first words, and given the plan for its execution. At last the blocks are
// linked, so that nothing has to search for an `end` when the script runs.

#include "script/ostrel_script.h"
#include "script/position_guard.h"

#include <algorithm>
#include <array>

// ---------------------------------------------------------------------------------------------------------------------
// Logical lines
// ---------------------------------------------------------------------------------------------------------------------

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Joins physical lines to logical ones. What is kept from one physical line to the next: the text gathered so far,
/// the line on which it began, the depths of the three kinds of brackets, and an open string.
class LineCutter {
public:
    explicit LineCutter(std::vector<ParsedScriptLine>& lines) : lines_(lines) {}

    void addPhysicalLine(std::string_view line, std::size_t number) {
        number_ = number;
        if (pending_.empty() && line.empty()) {
            emit();
            return;
        }
        std::size_t cut = 0; // start of the stretch that is not appended yet
        std::size_t i = 0;
        for (; i < line.size(); ++i) {
            const char c = line[i];
            if (quote_ != 0) {
                scanInString(c);
            } else if (c == '@' && i + 1 < line.size() && line[i + 1] == '@') {
                break;
            } else if (c == '"' || c == '\'') {
                quote_ = c;
            } else if (c == ';' && isBalanced()) {
                append(line.substr(cut, i - cut));
                cut = i + 1;
                if (!pending_.empty()) emit();
            } else {
                scanBracket(c);
            }
        }
        append(line.substr(cut, i - cut));
        if (quote_ == 0 && isBalanced()) emit();
    }

    void finish() {
        if (!pending_.empty()) emit();
    }

private:
    bool isBalanced() const { return parentheses_ == 0 && brackets_ == 0 && braces_ == 0; }

    void scanInString(char c) {
        if (escaped_)
            escaped_ = false;
        else if (c == '\\')
            escaped_ = true;
        else if (c == quote_)
            quote_ = 0;
    }

    void scanBracket(char c) {
        switch (c) {
        case '(': ++parentheses_; break;
        case '[': ++brackets_; break;
        case '{': ++braces_; break;
        case ')': parentheses_ -= parentheses_ > 0 ? 1 : 0; break;
        case ']': brackets_ -= brackets_ > 0 ? 1 : 0; break;
        case '}': braces_ -= braces_ > 0 ? 1 : 0; break;
        default: break;
        }
    }

    void append(std::string_view stretch) {
        if (pending_.empty())
            pendingNumber_ = number_;
        else
            pending_ += ' ';
        pending_ += trimmed(stretch);
    }

    void emit() {
        ParsedScriptLine& line = lines_.emplace_back();
        line.lineNumber = pending_.empty() ? number_ : pendingNumber_;
        line.text = std::move(pending_);
        pending_.clear();
    }

    std::vector<ParsedScriptLine>& lines_;
    std::string pending_;
    std::size_t number_ = 0;
    std::size_t pendingNumber_ = 0;
    std::size_t parentheses_ = 0, brackets_ = 0, braces_ = 0;
    char quote_ = 0;
    bool escaped_ = false;
};

} // namespace

std::vector<ParsedScriptLine> OstrelScript::parseLines(const std::string& source) {
    const PositionGuard guard(*this);
    std::vector<ParsedScriptLine> lines;
    lines.reserve(static_cast<std::size_t>(std::count(source.begin(), source.end(), '\n')) + 1);
    LineCutter cutter(lines);
    const std::string_view text = source;
    std::size_t number = 0;
    for (std::size_t start = 0; start <= text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        cutter.addPhysicalLine(text.substr(start, end - start), number);
        start = end + 1;
    }
    cutter.finish();

    for (ParsedScriptLine& line : lines) {
        position_.lineNumber = line.lineNumber;
        line.tokens = tokenise(line.text);
        line.tokenAnalysis.reserve(line.tokens.size());
        for (const std::string& token : line.tokens) line.tokenAnalysis.push_back(analyseToken(token));
    }
    prepareParsedLines(lines);
    return lines;
}

// ---------------------------------------------------------------------------------------------------------------------
// Classification
// ---------------------------------------------------------------------------------------------------------------------

namespace {

struct KindRow {
    std::string_view word;
    LineKind kind;
};

constexpr std::array<KindRow, 12> kindRows = {{{"if", LineKind::If},
                                               {"elseif", LineKind::Elseif},
                                               {"else", LineKind::Else},
                                               {"end", LineKind::End},
                                               {"while", LineKind::While},
                                               {"repeat", LineKind::Repeat},
                                               {"until", LineKind::Until},
                                               {"for", LineKind::For},
                                               {"function", LineKind::Function},
                                               {"nest", LineKind::Nest},
                                               {"return", LineKind::Return},
                                               {"break", LineKind::Break}}};

constexpr std::array<KindRow, 3> functionPrefixes = {
    {{"decay", LineKind::DecayFunction}, {"native", LineKind::NativeFunction}, {"local", LineKind::LocalFunction}}};

LineKind classifyLine(const std::vector<std::string>& tokens) {
    if (tokens.empty()) return LineKind::Blank;
    for (const KindRow& row : kindRows)
        if (row.word == tokens[0]) return row.kind;
    if (tokens.size() > 1 && tokens[1] == "function")
        for (const KindRow& row : functionPrefixes)
            if (row.word == tokens[0]) return row.kind;
    return LineKind::Plain;
}

bool needsPlan(LineKind kind) {
    switch (kind) {
    case LineKind::Plain:
    case LineKind::If:
    case LineKind::Elseif:
    case LineKind::While:
    case LineKind::Until:
    case LineKind::For:
    case LineKind::Return:
    case LineKind::Nest: return true;
    default: return false;
    }
}

ScopeTarget scopeTargetOf(const std::string& word) {
    if (word == "native") return ScopeTarget::Native;
    if (word == "local") return ScopeTarget::Local;
    if (word == "external") return ScopeTarget::External;
    return ScopeTarget::None;
}

/// Counts brackets of one kind; a closing one without its opening one counts for nothing.
class BracketDepth {
public:
    void read(const std::string& token) {
        if (token == "(" || token == "[" || token == "{")
            ++depth_;
        else if ((token == ")" || token == "]" || token == "}") && depth_ > 0)
            --depth_;
    }
    bool isTop() const { return depth_ == 0; }

private:
    std::size_t depth_ = 0;
};

/// The first top-level token from `first` on that equals `stop`, or the token count.
std::size_t findTopLevel(const std::vector<std::string>& tokens, std::size_t first, std::string_view stop) {
    BracketDepth depth;
    for (std::size_t i = first; i < tokens.size(); ++i) {
        if (depth.isTop() && tokens[i] == stop) return i;
        depth.read(tokens[i]);
    }
    return tokens.size();
}

/// The `]` that closes the bracket at `open`, or the token count.
std::size_t findClosingBracket(const std::vector<std::string>& tokens, std::size_t open) {
    return findTopLevel(tokens, open + 1, "]");
}

/// Cuts the tokens from `first` on at top-level commas.
std::vector<TokenRange> cutAtCommas(const std::vector<std::string>& tokens, std::size_t first) {
    std::vector<TokenRange> ranges;
    while (true) {
        const std::size_t end = findTopLevel(tokens, first, ",");
        ranges.emplace_back(first, end);
        if (end == tokens.size()) return ranges;
        first = end + 1;
    }
}

/// Fills the plan of one line.
class LinePlanner {
public:
    explicit LinePlanner(const ParsedScriptLine& line) : tokens_(line.tokens), analysis_(line.tokenAnalysis) {}

    bool planAssignment(LinePlan& plan) const {
        plan.scopeTarget = scopeTargetOf(tokens_[0]);
        std::size_t i = plan.scopeTarget == ScopeTarget::None ? 0 : 1;
        while (true) {
            if (i >= tokens_.size() || !analysis_[i].isIdentifier) return false;
            ParsedAssignmentTarget target;
            target.nameToken = i;
            target.name = analysis_[i];
            for (++i; i < tokens_.size() && tokens_[i] == "["; ++i) {
                const std::size_t close = findClosingBracket(tokens_, i);
                if (close == tokens_.size()) return false;
                target.indexRanges.emplace_back(i + 1, close);
                target.indexExpressions.push_back(compile(i + 1, close));
                i = close;
            }
            plan.targets.push_back(std::move(target));
            if (i < tokens_.size() && tokens_[i] == ",")
                ++i;
            else
                break;
        }
        if (i == tokens_.size()) return planDeclaration(plan);
        if (!readAssignmentOperator(tokens_[i], plan.compoundOperator)) return false;
        if (plan.compoundOperator != BinaryOperator::None && plan.targets.size() > 1) return false;
        plan.isAssignment = true;
        plan.assignOperatorIndex = i;
        planValues(plan, i + 1);
        return true;
    }

    static StatementForm formOf(const LinePlan& plan) {
        if (plan.isDeclaration) return StatementForm::General;
        if (!plan.isAssignment) return plan.expression.isValid() ? StatementForm::Call : StatementForm::General;
        if (plan.targets.size() != 1 || plan.values.size() != 1 || !plan.values[0].isValid())
            return StatementForm::General;
        const ParsedAssignmentTarget& target = plan.targets[0];
        const bool isPlain = plan.compoundOperator == BinaryOperator::None;
        if (target.indexRanges.empty()) {
            if (!isPlain) return StatementForm::CompoundName;
            const bool isLocal = plan.scopeTarget == ScopeTarget::Local;
            const bool fits =
                target.name.explicitScope == ExplicitScope::None && (isLocal || plan.scopeTarget == ScopeTarget::None);
            return fits ? StatementForm::AssignName : StatementForm::General;
        }
        const bool oneKey = target.indexRanges.size() == 1 && target.indexExpressions[0].isValid();
        return isPlain && oneKey ? StatementForm::AssignElement : StatementForm::General;
    }

    void planReturn(LinePlan& plan) const {
        if (tokens_.size() > 1) planValues(plan, 1);
    }

    void planFor(LinePlan& plan) const {
        plan.isNumericFor = tokens_.size() >= 4 && analysis_[1].isIdentifier && tokens_[2] == "=";
        if (plan.isNumericFor)
            planNumericFor(plan);
        else
            planGenericFor(plan);
    }

    /// False if the label is no string literal.
    bool planNest(LinePlan& plan) const {
        if (tokens_.size() == 1) return true;
        if (tokens_.size() != 4 || tokens_.back() != ")") return false;
        const bool inside = tokens_[1] == "(" && analysis_[2].kind == TokenKind::String; // nest("label")
        const bool before = tokens_[2] == "(" && analysis_[1].kind == TokenKind::String; // nest "label"()
        if (!inside && !before) return false;
        plan.hasNestLabel = true;
        plan.nestLabel = decodeStringToken(tokens_[inside ? 2 : 1]);
        return true;
    }

    FastExpression compile(std::size_t first, std::size_t last) const {
        return compileFastExpressionRange(tokens_, analysis_, first, last);
    }

private:
    /// Names without values are a declaration if a keyword stands in front.
    static bool planDeclaration(LinePlan& plan) {
        const bool plain = std::all_of(plan.targets.begin(), plan.targets.end(),
                                       [](const ParsedAssignmentTarget& target) { return target.indexRanges.empty(); });
        plan.isDeclaration = plain && plan.scopeTarget != ScopeTarget::None;
        return plan.isDeclaration;
    }

    static bool readAssignmentOperator(const std::string& token, BinaryOperator& compound) {
        if (token == "=") return true;
        if (token.size() != 2 || token[1] != '=' ||
            std::string_view("+-*/\\%^").find(token[0]) == std::string_view::npos)
            return false;
        compound = classifyBinaryOperator(token.substr(0, 1));
        return true;
    }

    void planValues(LinePlan& plan, std::size_t first) const {
        plan.valueRanges = cutAtCommas(tokens_, first);
        for (const TokenRange& range : plan.valueRanges) plan.values.push_back(compile(range.first, range.second));
    }

    void planNumericFor(LinePlan& plan) const {
        plan.loopNames.push_back(analysis_[1].name);
        const std::vector<TokenRange> clauses = cutAtCommas(tokens_, 3);
        if (clauses.size() != 2 && clauses.size() != 3) return;
        plan.hasForStep = clauses.size() == 3;
        plan.forStart = compile(clauses[0].first, clauses[0].second);
        plan.forLimit = compile(clauses[1].first, clauses[1].second);
        if (plan.hasForStep) plan.forStep = compile(clauses[2].first, clauses[2].second);
    }

    void planGenericFor(LinePlan& plan) const {
        std::vector<Name*> names;
        std::size_t i = 1;
        while (true) {
            if (i >= tokens_.size() || !analysis_[i].isIdentifier) return;
            names.push_back(analysis_[i].name);
            if (++i >= tokens_.size() || tokens_[i] != ",") break;
            ++i;
        }
        if (i >= tokens_.size() || tokens_[i] != "in") return;
        plan.loopNames = std::move(names);
        plan.iteratorRange = {i + 1, tokens_.size()};
        plan.iteratorExpression = compile(i + 1, tokens_.size());
        planBuiltinIterator(plan);
    }

    /// `pairs(x)` and `ipairs(x)` named literally mean the built-in ones, whatever the names hold.
    void planBuiltinIterator(LinePlan& plan) const {
        const std::size_t first = plan.iteratorRange.first;
        if (tokens_.size() < first + 4 || tokens_[first + 1] != "(") return;
        const BuiltinId id = builtinIdFromName(tokens_[first]);
        if (id != BuiltinId::Pairs && id != BuiltinId::Ipairs) return;
        const std::size_t close = findTopLevel(tokens_, first + 2, ")");
        const bool oneArgument = findTopLevel(tokens_, first + 2, ",") >= close;
        if (close + 1 != tokens_.size() || !oneArgument) return;
        plan.iteratorBuiltin = id;
        plan.iteratorArgumentRange = {first + 2, close};
        plan.iteratorArgument = compile(first + 2, close);
    }

    const std::vector<std::string>& tokens_;
    const std::vector<TokenAnalysis>& analysis_;
};

// ---------------------------------------------------------------------------------------------------------------------
// Blocks
// ---------------------------------------------------------------------------------------------------------------------

/// An open block while the lines are walked: its opening line and, for a chain, the branch that was met last.
struct BlockEntry {
    bool isChain = false;
    bool isRepeat = false;
    std::size_t opening = 0;
    std::vector<std::size_t> branches;
};

void closeBlock(std::vector<ParsedScriptLine>& lines, const BlockEntry& entry, std::size_t end) {
    lines[entry.opening].matchingEnd = end;
    for (const std::size_t branch : entry.branches) lines[branch].matchingEnd = end;
}

} // namespace

void linkBlocks(std::vector<ParsedScriptLine>& lines) {
    std::vector<BlockEntry> open;
    for (ParsedScriptLine& line : lines) line.matchingEnd = line.nextBranch = noLine;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        switch (lines[i].kind) {
        case LineKind::If: open.push_back({true, false, i, {i}}); break;
        case LineKind::Elseif:
        case LineKind::Else:
            if (!open.empty() && open.back().isChain) {
                lines[open.back().branches.back()].nextBranch = i;
                open.back().branches.push_back(i);
            }
            break;
        case LineKind::Repeat: open.push_back({false, true, i, {}}); break;
        case LineKind::Until:
            if (!open.empty() && open.back().isRepeat) {
                closeBlock(lines, open.back(), i);
                open.pop_back();
            }
            break;
        case LineKind::End:
            if (open.empty()) break;
            if (!open.back().isRepeat) closeBlock(lines, open.back(), i); // an `end` never finishes a `repeat`
            open.pop_back();
            break;
        case LineKind::While:
        case LineKind::For:
        case LineKind::Function:
        case LineKind::DecayFunction:
        case LineKind::NativeFunction:
        case LineKind::LocalFunction:
        case LineKind::Nest: open.push_back({false, false, i, {}}); break;
        case LineKind::Blank:
        case LineKind::Plain:
        case LineKind::Return:
        case LineKind::Break: break;
        }
    }
}

const std::shared_ptr<const LinePlan>& emptyPlan() {
    static const auto plan = std::make_shared<const LinePlan>();
    return plan;
}

void OstrelScript::prepareParsedLines(std::vector<ParsedScriptLine>& lines) {
    const PositionGuard guard(*this);
    for (ParsedScriptLine& line : lines) {
        line.kind = classifyLine(line.tokens);
        line.matchingEnd = noLine;
        line.nextBranch = noLine;
        line.plan = emptyPlan();
        if (line.kind == LineKind::Blank) continue;
        setCurrentLine(line);

        if (!needsPlan(line.kind)) continue;
        auto plan = std::make_shared<LinePlan>();
        const LinePlanner planner(line);
        switch (line.kind) {
        case LineKind::Plain:
            if (!planner.planAssignment(*plan)) {
                *plan = LinePlan();
                plan->scopeTarget = scopeTargetOf(line.tokens[0]); // the keyword counts whatever follows it
                plan->expression = planner.compile(0, line.tokens.size());
            }
            plan->form = LinePlanner::formOf(*plan);
            break;
        case LineKind::If:
        case LineKind::Elseif:
        case LineKind::While:
        case LineKind::Until: plan->expression = planner.compile(1, line.tokens.size()); break;
        case LineKind::For: planner.planFor(*plan); break;
        case LineKind::Return: planner.planReturn(*plan); break;
        case LineKind::Nest:
            if (!planner.planNest(*plan)) throwError("nest labels must be string literals", line.tokens[0]);
            if (plan->hasNestLabel && plan->nestLabel.empty())
                throwError("nest label must not be empty", line.tokens[0]);
            break;
        default: break;
        }
        line.plan = std::move(plan);
    }
    linkBlocks(lines);
}
