// GMatrix: a matrix of doubles of any size, in row order. Owns its elements; belongs to whoever holds it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

/// A matrix. With a dimension below 1 it has no elements. Element indexes are the caller's to keep in range.
class GMatrix {
 public:
  /// @param aData aRows * aCols elements in row order, copied; null for all zero
  GMatrix(std::int32_t aRows, std::int32_t aCols, const double* aData = nullptr);
  GMatrix(const GMatrix& aOther);
  GMatrix(GMatrix&& aOther) noexcept;
  ~GMatrix() { delete[] m_pData; }
  GMatrix& operator=(GMatrix aOther) noexcept;

  std::int32_t Rows() const noexcept { return m_iRows; }
  std::int32_t Cols() const noexcept { return m_iCols; }
  /// The elements in row order; null when there are none.
  const double* Data() const noexcept { return m_pData; }

  double GetElement(std::int32_t aRow, std::int32_t aCol) const noexcept {
    return m_pData[Index(aRow, aCol)];
  }
  void SetElement(std::int32_t aRow, std::int32_t aCol, double aValue) noexcept {
    m_pData[Index(aRow, aCol)] = aValue;
  }

  /// aOther * this in the usual notation: a product that is built step by step takes each later factor on the
  /// left. As large as the smaller of the two in each dimension; all zero when the inner dimensions differ.
  GMatrix Multiply(const GMatrix& aOther) const;
  // As large as this matrix; all zero when the dimensions differ.
  GMatrix Add(const GMatrix& aOther) const;
  GMatrix Subtract(const GMatrix& aOther) const;

  void Scale(double aFactor) noexcept;
  void Divide(double aDivisor) noexcept;
  void Transpose();
  /// @return false for a matrix that isn't square, which stays as it is
  bool SetIdentity() noexcept;

  /// By expansion along column 0; 0 unless square and of size 2 or more.
  double Determinant() const;
  /// The determinant of what is left without a row and a column; 0 unless square.
  double Minor(std::int32_t aRow, std::int32_t aCol) const;
  double Cofactor(std::int32_t aRow, std::int32_t aCol) const;
  /// Inverts in place; up to size 4 nothing is allocated.
  /// @return false for a matrix that isn't square or has a determinant of exactly 0, which stays as it is
  bool Invert();

 private:
  std::size_t Index(std::int32_t aRow, std::int32_t aCol) const noexcept {
    return static_cast<std::size_t>(aRow) * static_cast<std::size_t>(m_iCols) +
           static_cast<std::size_t>(aCol);
  }
  std::size_t Count() const noexcept;
  bool IsSquare() const noexcept { return m_iRows == m_iCols; }
  bool HasSizeOf(const GMatrix& aOther) const noexcept {
    return m_iRows == aOther.m_iRows && m_iCols == aOther.m_iCols;
  }

  std::int32_t m_iRows;
  std::int32_t m_iCols;
  double* m_pData = nullptr;
};
