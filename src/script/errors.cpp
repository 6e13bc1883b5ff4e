// Errors: the report with its line and caret, and the two channels on which an error travels.

#include "script/error_report.h"
#include "script/ostrel_script.h"

namespace {

constexpr std::string_view reportPrefix = "OstrelScript error: ";
constexpr std::string_view reportHint = "  hint: check spelling, operators, parentheses, and quote matching\n";

/// The line with a caret under the token; under the line's end if the token isn't in it.
std::string underline(const std::string& line, std::string_view token) {
    std::size_t column = line.size();
    const bool hasPlace = !token.empty() && token != "EOF";
    if (hasPlace && line.find(token) != std::string::npos) column = line.find(token);
    std::string text = "  " + line + "\n  " + std::string(column, ' ') + "^";
    if (hasPlace && token.size() >= 2 && column + token.size() <= line.size()) text.append(token.size() - 1, '~');
    return text + "\n";
}

} // namespace

bool isErrorReport(std::string_view message) {
    return message.substr(0, reportPrefix.size() - 1) == reportPrefix.substr(0, reportPrefix.size() - 1);
}

void OstrelScript::throwError(const std::string& message, std::string_view token) {
    static const std::string noText;
    const std::string& line = position_.text != nullptr   ? *position_.text
                              : position_.line != nullptr ? position_.line->text
                                                          : noText;
    std::string report = std::string(reportPrefix) + message + "\n  at ";
    report += sourcePath_ == nullptr ? "line " : *sourcePath_ + ":";
    report += std::to_string(position_.lineNumber + 1);
    if (!token.empty()) report += ", near token '" + std::string(token) + "'";
    report += "\n" + underline(line, token);
    report += reportHint;
    throw std::runtime_error(report);
}

void OstrelScript::rethrowWithPosition() {
    try {
        throw;
    } catch (const RaisedScriptError&) {
        throw;
    } catch (const BytecodeStructureError&) {
        throw;
    } catch (const std::exception& error) {
        if (isErrorReport(error.what())) throw;
        throwError(error.what(), lastTokenText());
    }
}

std::string_view OstrelScript::lastTokenText() const {
    if (position_.tokens == nullptr || position_.token >= position_.tokens->size()) return {};
    return (*position_.tokens)[position_.token];
}

void OstrelScript::reportStepLimit() {
    stepsLeft_ = 0;
    throw std::runtime_error("step limit reached");
}

void OstrelScript::raiseError(std::string message) {
    if (protectedDepths_.empty()) throw RaisedScriptError(std::move(message));
    raiseScriptErrorSoft(std::move(message));
}

void OstrelScript::raiseScriptErrorSoft(std::string message) {
    if (softErrorPending_ || protectedDepths_.empty()) return;
    softErrorPending_ = true;
    softErrorDepth_ = protectedDepths_.back();
    softErrorMessage_ = std::move(message);
}

void OstrelScript::clearSoftRaisedError() {
    softErrorPending_ = false;
    softErrorDepth_ = 0;
    softErrorMessage_.clear();
}
