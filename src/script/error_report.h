#pragma once

#include <string_view>

/// True for a text that is a full report already, with line and caret.
bool isErrorReport(std::string_view message);
