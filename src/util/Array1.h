// An array that counts from 1.
//
// Point, level and triangle numbers are 1-based in memory and in the files, because hull links and
// exports carry them. This class holds the only "- 1" that turns such a number into an address;
// debug builds check every index.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace terravo {

/// Number of a point, level or triangle: 1-based, 0 means "none".
using Index = std::int32_t;

template <class T>
class Array1 {
public:
    Array1() = default;
    explicit Array1(Index count, const T& value = T{})
        : items_(static_cast<std::size_t>(count), value) {}
    Array1(std::initializer_list<T> items) : items_(items) {}
    /// The first of the items gets number 1.
    explicit Array1(std::vector<T> items) : items_(std::move(items)) {}

    /// Element i, 1 <= i <= UpperBound().
    T& operator[](Index i) {
        assert(i >= 1 && i <= UpperBound());
        return items_[static_cast<std::size_t>(i) - 1];
    }
    const T& operator[](Index i) const {
        assert(i >= 1 && i <= UpperBound());
        return items_[static_cast<std::size_t>(i) - 1];
    }

    [[nodiscard]] Index UpperBound() const { return static_cast<Index>(items_.size()); }

    /// Changes the length and keeps the contents; new elements are value-initialised.
    void Resize(Index count) { items_.resize(static_cast<std::size_t>(count)); }
    /// Makes room for so many elements; the length stays.
    void Reserve(Index count) { items_.reserve(static_cast<std::size_t>(count)); }
    void Append(T value) { items_.push_back(std::move(value)); }
    void Clear() { items_.clear(); }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    bool operator==(const Array1&) const = default;

private:
    std::vector<T> items_;
};

/// A table whose rows and columns count from 1.
template <class T>
class Table {
public:
    Table() = default;
    Table(Index rows, Index columns, const T& value = T{})
        : columns_(columns), items_(rows * columns, value) {}

    T& operator()(Index row, Index column) { return items_[Place(row, column)]; }
    const T& operator()(Index row, Index column) const { return items_[Place(row, column)]; }

    [[nodiscard]] Index Rows() const { return columns_ == 0 ? 0 : items_.UpperBound() / columns_; }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    [[nodiscard]] Index Place(Index row, Index column) const {
        assert(row >= 1 && column >= 1 && column <= columns_);
        return (row - 1) * columns_ + column;
    }

    Index columns_ = 0;
    Array1<T> items_;
};

} // namespace terravo
