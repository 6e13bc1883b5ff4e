#pragma once

// A sort that survives any comparison.
//
// The standard library's sort relies on the comparison being an order: one that contradicts itself sends it beyond the
// ends of the list. A script's comparison is whatever a script says, so this one carries its bounds in every loop. It
// is the usual mixture: quicksort by a median of samples, a heap sort once the splits have been poor for too long,
// and an insertion sort for short stretches. With a real order the result is sorted, with anything else it is some
// arrangement of the same elements; the comparisons are of the order of n log n either way.
//
// The comparison may ask for an end: `stopped()` is read between its calls, and the elements then stay as they lie.

#include <cstddef>
#include <utility>
#include <vector>

template <typename Element, typename Order> class Introsort {
public:
    /// `order(a, b)` says whether a comes first.
    Introsort(std::vector<Element>& elements, Order& order) : elements_(elements), order_(order) {}

    void run() {
        std::size_t poorSplits = 0;
        for (std::size_t size = elements_.size(); size > 1; size /= 2) poorSplits += 2;
        sort(0, elements_.size(), poorSplits);
    }

private:
    static constexpr std::size_t shortStretch = 16; // elements; sorted by insertion
    static constexpr std::size_t longStretch = 128;

    void sort(std::size_t first, std::size_t last, std::size_t splitsLeft) {
        while (last - first > shortStretch) {
            if (order_.stopped()) return;
            if (splitsLeft == 0) return heapSort(first, last);
            --splitsLeft;
            const std::size_t middle = split(first, last);
            // The smaller side by recursion, which bounds its depth by the logarithm; the larger side by the loop.
            if (middle - first < last - middle) {
                sort(first, middle, splitsLeft);
                first = middle + 1;
            } else {
                sort(middle + 1, last, splitsLeft);
                last = middle;
            }
        }
        insertionSort(first, last);
    }

    /// Brings a middling element to the front, parts the rest by it and puts it between; gives its place.
    std::size_t split(std::size_t first, std::size_t last) {
        std::swap(elements_[first], elements_[middlingOf(first + 1, last - 1)]);
        const Element& pivot = elements_[first]; // everything below moves only what lies behind it
        std::size_t low = first + 1;
        std::size_t high = last - 1;
        while (!order_.stopped()) {
            while (low <= high && order_(elements_[low], pivot)) ++low;
            while (low <= high && order_(pivot, elements_[high])) --high;
            if (low >= high) break;
            std::swap(elements_[low], elements_[high]);
            ++low;
            --high;
        }
        std::swap(elements_[first], elements_[high]);
        return high;
    }

    /// The median of three; of a long stretch the median of three such medians, which lists that rise and then fall
    /// (or the reverse) don't deceive.
    std::size_t middlingOf(std::size_t low, std::size_t high) {
        const std::size_t middle = low + (high - low) / 2;
        if (high - low < longStretch) return medianOf(low, middle, high);
        const std::size_t step = (high - low) / 8;
        return medianOf(medianOf(low, low + step, low + 2 * step), medianOf(middle - step, middle, middle + step),
                        medianOf(high - 2 * step, high - step, high));
    }

    std::size_t medianOf(std::size_t a, std::size_t b, std::size_t c) {
        if (order_(elements_[b], elements_[a])) std::swap(a, b);
        if (!order_(elements_[c], elements_[b])) return b;
        return order_(elements_[c], elements_[a]) ? a : c;
    }

    void insertionSort(std::size_t first, std::size_t last) {
        for (std::size_t next = first + 1; next < last && !order_.stopped(); ++next) {
            Element element = std::move(elements_[next]);
            std::size_t place = next;
            for (; place > first && order_(element, elements_[place - 1]); --place)
                elements_[place] = std::move(elements_[place - 1]);
            elements_[place] = std::move(element);
        }
    }

    void heapSort(std::size_t first, std::size_t last) {
        const std::size_t size = last - first;
        for (std::size_t root = size / 2; root > 0 && !order_.stopped(); --root) sink(first, root - 1, size);
        for (std::size_t end = size - 1; end > 0 && !order_.stopped(); --end) {
            std::swap(elements_[first], elements_[first + end]);
            sink(first, 0, end);
        }
    }

    /// Lets the element at `root` sink in the heap that fills `size` places from `first`.
    void sink(std::size_t first, std::size_t root, std::size_t size) {
        for (std::size_t child = 2 * root + 1; child < size; child = 2 * root + 1) {
            if (child + 1 < size && order_(elements_[first + child], elements_[first + child + 1])) ++child;
            if (!order_(elements_[first + root], elements_[first + child])) return;
            std::swap(elements_[first + root], elements_[first + child]);
            root = child;
        }
    }

    std::vector<Element>& elements_;
    Order& order_;
};

/// Sorts the elements; `order` is kept by reference and may remember things.
template <typename Element, typename Order> void introsort(std::vector<Element>& elements, Order& order) {
    Introsort<Element, Order>(elements, order).run();
}
