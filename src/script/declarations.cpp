// Function declarations: from a line and a body to a function value.

#include "script/ostrel_script.h"

#include <algorithm>

/// Reads `[prefix] function target ( parameters )`, fills in the callable's name and parameters, and stores it.
void OstrelScript::declareFunction(const ParsedScriptLine& line, Ref<ScriptCallable> callable) {
    const std::vector<std::string>& tokens = line.tokens;
    std::size_t i = line.kind == LineKind::Function ? 1 : 2;
    const auto fail = [this, &tokens, &i](const char* message) {
        throwError(message, i < tokens.size() ? std::string_view(tokens[i]) : std::string_view("EOF"));
    };
    const auto isToken = [&tokens, &i](std::string_view text) { return i < tokens.size() && tokens[i] == text; };

    if (i >= tokens.size() || !line.tokenAnalysis[i].isIdentifier) fail("Expected function target");
    const TokenAnalysis& target = line.tokenAnalysis[i];
    callable->name = tokens[i++];
    std::vector<Variable> keys;
    while (isToken("[")) {
        ++i;
        keys.push_back(evaluateExpression(tokens, i, &line.tokenAnalysis));
        if (shouldAbortForSoftRaisedError()) return;
        if (!isToken("]")) fail("Expected closing bracket in function target");
        ++i;
    }
    if (!isToken("(")) fail("Expected '(' after function target");
    ++i;
    while (!isToken(")")) {
        if (isToken("...")) {
            callable->isVariadic = true;
            ++i;
            if (!isToken(")")) fail("Expected ')' after function parameters");
            break;
        }
        if (i >= tokens.size() || !line.tokenAnalysis[i].isIdentifier) fail("Expected function parameter name");
        callable->parameters.push_back(line.tokenAnalysis[i].name);
        ++i;
        if (isToken(")")) break;
        if (!isToken(",")) fail("Expected ',' or ')' after function parameter");
        ++i;
        if (isToken(")")) fail("Expected function parameter name");
    }
    ++i;
    if (i < tokens.size()) fail("Unexpected token after function declaration");

    callable->isCoroutine = line.kind == LineKind::DecayFunction;
    callable->isGlobalDeclared = line.kind == LineKind::Function || line.kind == LineKind::DecayFunction ? 1 : 0;
    callable->nativeScopeIndex = blockDepth_;
    const ScopeTarget scope = line.kind == LineKind::LocalFunction    ? ScopeTarget::Local
                              : line.kind == LineKind::NativeFunction ? ScopeTarget::Native
                                                                      : ScopeTarget::None;
    if (keys.empty())
        assignToken(target, Variable(std::move(callable)), scope);
    else
        assignIndexed(target, keys, Variable(std::move(callable)), scope);
}

namespace {

/// True if the line is `error("text")`; gives the decoded text.
bool extractLiteralErrorCall(const ParsedScriptLine& line, std::string& message) {
    const std::vector<std::string>& tokens = line.tokens;
    if (tokens.size() != 4 || tokens[0] != "error" || tokens[1] != "(" || tokens[3] != ")") return false;
    if (line.tokenAnalysis[2].kind != TokenKind::String) return false;
    message = decodeStringToken(tokens[2]);
    return true;
}

} // namespace

/// Recognises bodies that are one `return`, with or without one guard clause in front: `if bad`, `error("...")`, `end`.
/// Such a body runs without a block of its own.
void OstrelScript::prepareFastCallableBody(ScriptCallable& callable, const ParsedScriptLine* first,
                                           const ParsedScriptLine* last) const {
    constexpr std::size_t longestBody = 4;
    std::vector<const ParsedScriptLine*> lines;
    for (const ParsedScriptLine* line = first; line != last && lines.size() <= longestBody; ++line)
        if (!line->tokens.empty()) lines.push_back(line);

    if (lines.size() == 1 && lines[0]->kind == LineKind::Return) {
        callable.fastBody = FastBody::Return;
        callable.returnLine = lines[0];
        return;
    }
    if (lines.size() != longestBody) return;
    const bool isGuard = lines[0]->kind == LineKind::If && lines[0]->nextBranch == noLine &&
                         lines[2]->kind == LineKind::End && lines[3]->kind == LineKind::Return;
    if (!isGuard || !extractLiteralErrorCall(*lines[1], callable.guardMessage)) return;
    callable.fastBody = FastBody::GuardedReturn;
    callable.guardLine = lines[0];
    callable.errorLine = lines[1];
    callable.returnLine = lines[3];
}
