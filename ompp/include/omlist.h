// The framework's doubly linked list of pointers. What sets it apart from a standard container:
// while `apply` visits the items, the visited item may remove itself or any others, or add new
// ones.
//
// The list does not own its items. Main thread only.
#pragma once

#include "omdebug.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <utility>

template <class T>
class OMListLocator;

template <class T>
class OMList {
  public:
    /// Applies may be nested this deep on one list; one more is a fatal error.
    static constexpr int kApplyDepth = 3;

    OMList() = default;
    OMList& operator=(OMList&&) = delete;
    ~OMList() { clear(); }

    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] bool empty() const { return count_ == 0; }
    [[nodiscard]] T* first() const { return head_ ? head_->item : nullptr; }
    [[nodiscard]] T* last() const { return tail_ ? tail_->item : nullptr; }

    void append(T* item) { insertBefore(nullptr, item); }

    /// Keeps an order: inserts `item` in front of the last items, for which `isBehind(listed)`
    /// holds. Sought from the end, where most new items belong.
    template <class Predicate>
    void insertInOrder(T* item, Predicate isBehind) {
        OMListElement* next = nullptr;
        while (OMListElement* before = next ? next->previous : tail_) {
            if (!isBehind(*before->item)) break;
            next = before;
        }
        insertBefore(next, item);
    }

    /// Removes the first occurrence; false when the item is not listed.
    bool remove(const T* item) {
        for (OMListElement* element = head_; element; element = element->next) {
            if (element->item != item) continue;
            unlink(element);
            return true;
        }
        return false;
    }

    void clear() {
        while (head_) unlink(head_);
    }

    template <class Predicate>
    [[nodiscard]] T* find(Predicate predicate) const {
        for (const OMListElement* element = head_; element; element = element->next)
            if (predicate(*element->item)) return element->item;
        return nullptr;
    }

    /// As find, from the end to the start.
    template <class Predicate>
    [[nodiscard]] T* findLast(Predicate predicate) const {
        for (const OMListElement* element = tail_; element; element = element->previous)
            if (predicate(*element->item)) return element->item;
        return nullptr;
    }

    /// Calls `function` with every item from head to tail. The function may change the list.
    template <class Function>
    void apply(Function function) {
        OMDebug::require(tos_ < kApplyDepth, "tos > 1", "too many nested calls to apply");
        const int slot = tos_++;
        OMListElement* element = head_;
        while (element) {
            next_[static_cast<std::size_t>(slot)] = element->next;
            function(*element->item);
            element = next_[static_cast<std::size_t>(slot)];
        }
        --tos_;
    }

  private:
    friend class OMListLocator<T>;

    struct OMListElement {
        T* item;
        OMListElement* previous;
        OMListElement* next;
    };

    void insertBefore(OMListElement* position, T* item) {
        OMListElement* before = position ? position->previous : tail_;
        auto* element = new OMListElement{item, before, position};
        (before ? before->next : head_) = element;
        (position ? position->previous : tail_) = element;
        ++count_;
    }

    void unlink(OMListElement* element) {
        (element->previous ? element->previous->next : head_) = element->next;
        (element->next ? element->next->previous : tail_) = element->previous;
        std::replace(next_.begin(), next_.begin() + tos_, element, element->next);
        --count_;
        delete element;
    }

    OMListElement* head_ = nullptr;
    OMListElement* tail_ = nullptr;
    std::size_t count_ = 0;
    std::array<OMListElement*, kApplyDepth> next_{}; ///< where each running apply goes on
    int tos_ = 0;                                    ///< applies running
};

/// A read cursor over a list that does not change meanwhile.
template <class T>
class OMListLocator {
  public:
    explicit OMListLocator(const OMList<T>& list) : element_(list.head_) {}

    /// The next item, or null at the end.
    T* next() {
        if (!element_) return nullptr;
        T* item = element_->item;
        element_ = element_->next;
        return item;
    }

  private:
    const typename OMList<T>::OMListElement* element_;
};
