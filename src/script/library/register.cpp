// How the library's functions reach the engine, and how they fail.

#include "script/library/functions.h"

#include <stdexcept>

void fail(const char* message) { throw std::runtime_error(message); }

void fail(const std::string& message) { throw std::runtime_error(message); }

void registerLibraryTable(OstrelScript& engine, std::string_view tableName,
                          std::initializer_list<LibraryEntry> entries) {
    auto table = makeRef<Table>();
    table->reserve(entries.size());
    for (const LibraryEntry& entry : entries) {
        const std::string qualified = std::string(tableName) + "." + entry.name;
        table->findOrAdd(engine.internText(entry.name)) = engine.makeLibraryCallable(entry.function, qualified);
    }
    engine.pushVariable(tableName, Variable(std::move(table)));
}
