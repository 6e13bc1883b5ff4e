#pragma once

// Shared ownership of the objects behind values.
//
// A value is copied far more often than it is used, so a hold on an object must cost little: the count stands in front
// of the object itself, a hold is one pointer, and counting is plain arithmetic. All script work stands on one thread,
// which is why the count need not be atomic. What is behind a hold need not know about it: `Shared<T>` adds the count
// to any class.

#include <cstddef>
#include <cstdint>
#include <utility>

/// The number of holds on an object; the object lies behind it.
struct SharedHead {
    std::uint32_t holds = 0;
};

/// A `T` with its count.
template <typename T> struct Shared final : SharedHead, T {
    template <typename... Arguments>
    explicit Shared(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...) {}
};

/// A hold on a `T`, or on nothing. The object dies with the last hold.
template <typename T> class Ref {
public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    Ref(const Ref& other) noexcept : head_(other.head_) {
        if (head_ != nullptr) ++head_->holds;
    }
    Ref(Ref&& other) noexcept : head_(std::exchange(other.head_, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(head_, other.head_);
        return *this;
    }
    ~Ref() {
        if (head_ != nullptr && --head_->holds == 0) destroy(head_);
    }

    /// Another hold on an object that makeRef made.
    static Ref of(T& object) noexcept { return ofHead(&static_cast<Shared<T>&>(object)); }
    /// Another hold on the object behind the head, which may be null.
    static Ref ofHead(SharedHead* head) noexcept {
        Ref ref;
        ref.head_ = head;
        if (head != nullptr) ++head->holds;
        return ref;
    }
    /// Gives the hold away: its count stays raised.
    SharedHead* release() noexcept { return std::exchange(head_, nullptr); }

    T* get() const noexcept { return static_cast<Shared<T>*>(head_); }
    T& operator*() const noexcept { return *get(); }
    T* operator->() const noexcept { return get(); }
    explicit operator bool() const noexcept { return head_ != nullptr; }
    std::uint32_t useCount() const noexcept { return head_ == nullptr ? 0 : head_->holds; }
    bool operator==(const Ref& other) const noexcept { return head_ == other.head_; }

private:
    // Out of the way of the common case, in which other holds are left.
    [[gnu::noinline]] static void destroy(SharedHead* head) { delete static_cast<Shared<T>*>(head); }

    SharedHead* head_ = nullptr;
};

template <typename T, typename... Arguments> Ref<T> makeRef(Arguments&&... arguments) {
    return Ref<T>::ofHead(new Shared<T>(std::forward<Arguments>(arguments)...));
}
