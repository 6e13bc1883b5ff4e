#pragma once

// Names and what they are bound to.
//
// A name is looked up in whatever scopes are live when the line runs: there are no closures and nothing can be decided
// ahead of time. A walk over every scope for every name would be slow, so the walk is turned around. Each name is one
// object for the whole engine, and it knows its own live bindings: the newest one in a block scope, the newest one in
// a call frame, and its global. Entering a scope links its bindings in front, leaving it unlinks them, and a lookup
// reads at most three pointers, however deep the calls stand. It finds what the walk would find, by construction.

#include "script/variable.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct Name;

/// A variable in a block scope or a call frame. Bindings live on a stack and are linked from newest to oldest.
struct Binding {
    Variable value;
    Name* name = nullptr;        // null while the value of an argument waits for the others
    Binding* shadowed = nullptr; // the binding of the same name and kind that this one hides
    std::uint32_t block = 0;     // for block scopes: the scope's position in the stack of block scopes
    bool inFrame = false;        // in a call frame, not in a block scope
};

/// An interned name. Two names are equal exactly if their addresses are.
struct Name {
    std::string text;
    Ref<ScriptText> key;               // the same text as the pool has it, for a name that stands as a key
    Binding* newestInBlocks = nullptr; // may lie below the block scope base, and is then not visible
    Binding* newestInFrames = nullptr;
    Variable* global = nullptr;   // the live global of this name, or null
    std::uint32_t globalSlot = 0; // its slot number plus 1, or 0 while it never had one
};

/// The bindings of all live scopes, newest last. Storage comes in blocks that never move and are kept for reuse, so a
/// binding's address is good for as long as its scope, and a call allocates nothing once the stack has been as high.
class BindingStack {
public:
    std::size_t size() const { return size_; }
    Binding& operator[](std::size_t index) { return blocks_[index / blockSize][index % blockSize]; }
    Binding& push() {
        if (size_ == capacity_) [[unlikely]]
            addBlock();
        return (*this)[size_++];
    }
    /// A binding that no name leads to yet.
    Binding& pushUnnamed() {
        Binding& binding = push();
        binding.name = nullptr;
        return binding;
    }
    /// Unlinks and clears the newest bindings until `size` are left.
    void popTo(std::size_t size);
    /// Takes all bindings off their names, or puts them back on; for a whole execution state that goes or comes.
    void unlink();
    void link();

private:
    void addBlock();

    static constexpr std::size_t blockSize = 256;
    std::vector<std::unique_ptr<Binding[]>> blocks_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0; // of all blocks
};

/// One text for all literals and names that read the same, so that the keys of tables can be told apart by address.
/// Texts that nobody else holds any more are dropped when the pool has doubled.
class TextPool {
public:
    Ref<ScriptText> intern(std::string text);

private:
    static constexpr std::size_t longestShared = 64; // bytes; longer ones are no keys
    static constexpr std::size_t firstSweep = 1024;  // texts

    std::unordered_map<std::string_view, Ref<ScriptText>> texts_; // keys point into the texts
    std::size_t sweepAt_ = firstSweep;
};

/// All names of one engine. A name is never removed, so its address is good for as long as the engine.
class NameTable {
public:
    Name* intern(std::string_view text);
    /// The name if it is known, else null.
    Name* find(std::string_view text) const;
    TextPool& texts() { return texts_; }

private:
    TextPool texts_;
    std::deque<Name> names_;
    std::unordered_map<std::string_view, Name*> index_; // keys point into names_
};
