// GMatrix: a matrix of doubles of any size, in row order. Owns its elements. Not synchronised.

#pragma once

#include <cstddef>
#include <cstdint>

/// A matrix. It has no elements if a dimension is below 1. Element indexes are not checked.
class GMatrix {
 public:
  /// @param aData aRows * aCols elements in row order, copied; null sets all elements to 0
  GMatrix(std::int32_t aRows, std::int32_t aCols, const double* aData = nullptr);
  GMatrix(const GMatrix& aOther);
  GMatrix(GMatrix&& aOther) noexcept;
  ~GMatrix() { delete[] m_pData; }
  GMatrix& operator=(GMatrix aOther) noexcept;

  std::int32_t Rows() const noexcept { return m_iRows; }
  std::int32_t Cols() const noexcept { return m_iCols; }
  /// Returns the elements in row order; null for a matrix without elements.
  const double* Data() const noexcept { return m_pData; }

  double GetElement(std::int32_t aRow, std::int32_t aCol) const noexcept {
    return m_pData[Index(aRow, aCol)];
  }
  void SetElement(std::int32_t aRow, std::int32_t aCol, double aValue) noexcept {
    m_pData[Index(aRow, aCol)] = aValue;
  }

  /// Returns aOther * this in the usual notation: to build a product step by step, multiply by the next
  /// factor on the left. In each dimension the result has the smaller size of the two matrices. If the inner
  /// dimensions differ, all elements are 0.
  GMatrix Multiply(const GMatrix& aOther) const;
  // The result has the size of this matrix. If the dimensions differ, all elements are 0.
  GMatrix Add(const GMatrix& aOther) const;
  GMatrix Subtract(const GMatrix& aOther) const;

  void Scale(double aFactor) noexcept;
  void Divide(double aDivisor) noexcept;
  void Transpose();
  /// Sets the identity.
  /// @return false if the matrix is not square; nothing changes
  bool SetIdentity() noexcept;

  /// Returns the determinant, by expansion along column 0; 0 unless the matrix is square with size 2 or more.
  double Determinant() const;
  /// Returns the determinant of the matrix without one row and one column; 0 unless the matrix is square.
  double Minor(std::int32_t aRow, std::int32_t aCol) const;
  double Cofactor(std::int32_t aRow, std::int32_t aCol) const;
  /// Inverts the matrix in place. Sizes up to 4 allocate no memory.
  /// @return false if the matrix is not square or its determinant is exactly 0; nothing changes
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
