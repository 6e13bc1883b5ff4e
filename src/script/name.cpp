#include "script/name.h"

#include <algorithm>
#include <utility>

Ref<ScriptText> TextPool::intern(std::string text) {
    if (text.size() > longestShared) return makeRef<ScriptText>(std::move(text));
    const auto known = texts_.find(text);
    if (known != texts_.end()) return known->second;
    if (texts_.size() >= sweepAt_) {
        std::erase_if(texts_, [](const auto& entry) { return entry.second.useCount() == 1; });
        sweepAt_ = std::max(firstSweep, texts_.size() * 2);
    }
    Ref<ScriptText> made = makeRef<ScriptText>(std::move(text));
    texts_.emplace(made->text, made);
    return made;
}

Name* NameTable::intern(std::string_view text) {
    if (Name* known = find(text)) return known;
    Name& name = names_.emplace_back();
    name.text = text;
    name.key = texts_.intern(name.text);
    index_.emplace(name.text, &name);
    return &name;
}

Name* NameTable::find(std::string_view text) const {
    const auto place = index_.find(text);
    return place == index_.end() ? nullptr : place->second;
}

namespace {

/// Where a binding's name keeps the newest binding of its kind.
Binding*& newestOf(const Binding& binding) {
    return binding.inFrame ? binding.name->newestInFrames : binding.name->newestInBlocks;
}

} // namespace

void BindingStack::addBlock() {
    blocks_.push_back(std::make_unique<Binding[]>(blockSize));
    capacity_ += blockSize;
}

void BindingStack::popTo(std::size_t size) {
    while (size_ > size) {
        Binding& binding = (*this)[--size_];
        if (binding.name != nullptr) newestOf(binding) = binding.shadowed;
        binding.value.setNil();
    }
}

void BindingStack::unlink() {
    for (std::size_t i = size_; i > 0; --i) {
        Binding& binding = (*this)[i - 1];
        if (binding.name != nullptr) newestOf(binding) = binding.shadowed;
    }
}

void BindingStack::link() {
    for (std::size_t i = 0; i < size_; ++i) {
        Binding& binding = (*this)[i];
        if (binding.name != nullptr) binding.shadowed = std::exchange(newestOf(binding), &binding);
    }
}
