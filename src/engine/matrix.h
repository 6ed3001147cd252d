#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "shared/failure.h"

namespace welvane {

/// Samples of channels on the grid, one column after another. Columns count from 0, samples from 1 to samples().
/// The memory is taken at once and filled column by column, so that a column nobody fills costs no pages.
class Matrix {
  public:
    Matrix() = default;
    Matrix(int columns, std::int32_t samples)
        : columns_(columns),
          samples_(samples),
          values_(std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(columns) *
                                                           static_cast<std::size_t>(samples))) {}

    int columns() const { return columns_; }
    std::int32_t samples() const { return samples_; }

    /// All samples of a column, sample i at index i - 1. RunTimeFailure outside the matrix.
    std::span<double> column(int column) {
        if (column < 0 || column >= columns_) throw RunTimeFailure("subscript out of range");
        return {values_.get() + static_cast<std::size_t>(column) * static_cast<std::size_t>(samples_),
                static_cast<std::size_t>(samples_)};
    }
    std::span<const double> column(int column) const { return const_cast<Matrix*>(this)->column(column); }

  private:
    int columns_ = 0;
    std::int32_t samples_ = 0;
    std::unique_ptr<double[]> values_;
};

}  // namespace welvane
