#pragma once

#include "script/table.h"
#include "script/variable.h"

#include <utility>

/// The entries of a table literal as they come. Gathers positional values as an array until the first key turns up;
/// from then on everything is in a table.
struct LiteralEntries {
    Elements positional;
    Ref<Table> table;
    int position = 0;

    void add(Variable value) {
        ++position;
        if (table)
            table->set(position, std::move(value));
        else
            positional.push_back(std::move(value));
    }

    void add(const Ref<ScriptText>& key, Variable value) {
        if (!table) {
            table = makeRef<Table>();
            for (std::size_t i = 0; i < positional.size(); ++i)
                table->set(static_cast<int>(i) + 1, std::move(positional[i]));
        }
        table->findOrAdd(key) = std::move(value);
    }

    Variable take() { return table ? Variable(std::move(table)) : makeArray(std::move(positional)); }
};
