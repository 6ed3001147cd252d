#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

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
                                                           static_cast<std::size_t>(samples))),
          places_(static_cast<std::size_t>(columns)) {
        for (std::size_t column = 0; column < places_.size(); ++column)
            places_[column] = values_.get() + column * static_cast<std::size_t>(samples);
    }

    int columns() const { return columns_; }
    std::int32_t samples() const { return samples_; }

    /// All samples of a column, sample i at index i - 1. RunTimeFailure outside the matrix.
    std::span<double> column(int column) {
        if (column < 0 || column >= columns_) throw RunTimeFailure("subscript out of range");
        return {places_[static_cast<std::size_t>(column)], static_cast<std::size_t>(samples_)};
    }
    std::span<const double> column(int column) const { return const_cast<Matrix*>(this)->column(column); }

    /// The samples of a column are from now on those of another matrix, as many as this one has, which has to outlive
    /// it and no longer looks at them itself.
    void takeOver(int column, std::span<double> samples) { places_[static_cast<std::size_t>(column)] = samples.data(); }

  private:
    int columns_ = 0;
    std::int32_t samples_ = 0;
    std::unique_ptr<double[]> values_;
    std::vector<double*> places_;  ///< of each column
};

}  // namespace welvane
