// GMatrix: storage, matrix algebra, and determinant and inverse by cofactors. Sizes up to 4 are computed on
// the stack, larger ones by recursion over smaller matrices. Any thread; one thread per object.

#include "geometry/GMatrix.h"

#include <algorithm>
#include <utility>

namespace {

template <int N>
using Square = const double (&)[N * N];

template <int N>
double DeterminantOf(Square<N> m) noexcept;

/// Computes a minor of a matrix of N by N elements in row order.
template <int N>
double MinorOf(Square<N> m, int aRow, int aCol) noexcept {
  if constexpr (N == 2) {
    return m[(1 - aRow) * 2 + (1 - aCol)];
  } else {
    double rest[(N - 1) * (N - 1)];
    double* next = rest;
    for (int r = 0; r < N; ++r) {
      for (int c = 0; c < N; ++c) {
        if (r != aRow && c != aCol) *next++ = m[r * N + c];
      }
    }
    return DeterminantOf<N - 1>(rest);
  }
}

template <int N>
double CofactorOf(Square<N> m, int aRow, int aCol) noexcept {
  const double minor = MinorOf<N>(m, aRow, aCol);
  return (aRow + aCol) % 2 != 0 ? -minor : minor;
}

template <int N>
double DeterminantOf(Square<N> m) noexcept {
  if constexpr (N == 2) {
    return m[0] * m[3] - m[2] * m[1];
  } else {
    double sum = 0.0;
    for (int r = 0; r < N; ++r) sum += CofactorOf<N>(m, r, 0) * m[r * N];
    return sum;
  }
}

/// Inverts N by N elements in place.
/// @return false if the determinant is 0; nothing changes
template <int N>
bool InvertElements(double* aData) noexcept {
  double m[N * N];
  std::copy_n(aData, N * N, m);
  double cofactors[N * N];
  for (int r = 0; r < N; ++r) {
    for (int c = 0; c < N; ++c) cofactors[r * N + c] = CofactorOf<N>(m, r, c);
  }
  double determinant = 0.0;
  if constexpr (N == 2) {
    determinant = DeterminantOf<N>(m);
  } else {
    for (int r = 0; r < N; ++r) determinant += cofactors[r * N] * m[r * N];
  }
  if (determinant == 0.0) return false;
  for (int r = 0; r < N; ++r) {
    for (int c = 0; c < N; ++c) aData[r * N + c] = cofactors[c * N + r] / determinant;
  }
  return true;
}

/// Returns the determinant of elements in row order, for a fixed size.
template <int N>
double DeterminantAt(const double* aData) noexcept {
  double m[N * N];
  std::copy_n(aData, N * N, m);
  return DeterminantOf<N>(m);
}

}  // namespace

GMatrix::GMatrix(std::int32_t aRows, std::int32_t aCols, const double* aData)
    : m_iRows(aRows), m_iCols(aCols) {
  const std::size_t count = Count();
  if (count == 0) return;
  m_pData = new double[count]();
  if (aData != nullptr) std::copy_n(aData, count, m_pData);
}

GMatrix::GMatrix(const GMatrix& aOther) : GMatrix(aOther.m_iRows, aOther.m_iCols, aOther.m_pData) {}

GMatrix::GMatrix(GMatrix&& aOther) noexcept
    : m_iRows(std::exchange(aOther.m_iRows, 0)),
      m_iCols(std::exchange(aOther.m_iCols, 0)),
      m_pData(std::exchange(aOther.m_pData, nullptr)) {}

GMatrix& GMatrix::operator=(GMatrix aOther) noexcept {
  std::swap(m_iRows, aOther.m_iRows);
  std::swap(m_iCols, aOther.m_iCols);
  std::swap(m_pData, aOther.m_pData);
  return *this;
}

std::size_t GMatrix::Count() const noexcept {
  if (m_iRows < 1 || m_iCols < 1) return 0;
  return static_cast<std::size_t>(m_iRows) * static_cast<std::size_t>(m_iCols);
}

GMatrix GMatrix::Multiply(const GMatrix& aOther) const {
  GMatrix result(std::min(m_iRows, aOther.m_iRows), std::min(m_iCols, aOther.m_iCols));
  if (m_iRows != aOther.m_iCols) return result;
  for (std::int32_t r = 0; r < result.m_iRows; ++r) {
    for (std::int32_t c = 0; c < result.m_iCols; ++c) {
      double sum = 0.0;
      for (std::int32_t k = 0; k < m_iRows; ++k) sum += aOther.GetElement(r, k) * GetElement(k, c);
      result.SetElement(r, c, sum);
    }
  }
  return result;
}

GMatrix GMatrix::Add(const GMatrix& aOther) const {
  GMatrix result(m_iRows, m_iCols);
  if (!HasSizeOf(aOther)) return result;
  for (std::size_t i = 0; i < Count(); ++i) result.m_pData[i] = m_pData[i] + aOther.m_pData[i];
  return result;
}

GMatrix GMatrix::Subtract(const GMatrix& aOther) const {
  GMatrix result(m_iRows, m_iCols);
  if (!HasSizeOf(aOther)) return result;
  for (std::size_t i = 0; i < Count(); ++i) result.m_pData[i] = m_pData[i] - aOther.m_pData[i];
  return result;
}

void GMatrix::Scale(double aFactor) noexcept {
  for (std::size_t i = 0; i < Count(); ++i) m_pData[i] *= aFactor;
}

void GMatrix::Divide(double aDivisor) noexcept {
  for (std::size_t i = 0; i < Count(); ++i) m_pData[i] /= aDivisor;
}

void GMatrix::Transpose() {
  GMatrix result(m_iCols, m_iRows);
  for (std::int32_t r = 0; r < m_iRows; ++r) {
    for (std::int32_t c = 0; c < m_iCols; ++c) result.SetElement(c, r, GetElement(r, c));
  }
  *this = std::move(result);
}

bool GMatrix::SetIdentity() noexcept {
  if (!IsSquare()) return false;
  std::fill_n(m_pData, Count(), 0.0);
  for (std::int32_t i = 0; i < m_iRows; ++i) SetElement(i, i, 1.0);
  return true;
}

double GMatrix::Determinant() const {
  if (!IsSquare()) return 0.0;
  switch (m_iRows) {
    case 2:
      return DeterminantAt<2>(m_pData);
    case 3:
      return DeterminantAt<3>(m_pData);
    case 4:
      return DeterminantAt<4>(m_pData);
  }
  double sum = 0.0;
  for (std::int32_t r = 0; r < m_iRows; ++r) sum += Cofactor(r, 0) * GetElement(r, 0);
  return sum;
}

double GMatrix::Minor(std::int32_t aRow, std::int32_t aCol) const {
  if (!IsSquare()) return 0.0;
  if (m_iRows == 2) return GetElement(1 - aRow, 1 - aCol);
  GMatrix rest(m_iRows - 1, m_iCols - 1);
  double* next = rest.m_pData;
  for (std::int32_t r = 0; r < m_iRows; ++r) {
    for (std::int32_t c = 0; c < m_iCols; ++c) {
      if (r != aRow && c != aCol) *next++ = GetElement(r, c);
    }
  }
  return rest.Determinant();
}

double GMatrix::Cofactor(std::int32_t aRow, std::int32_t aCol) const {
  const double minor = Minor(aRow, aCol);
  return (aRow + aCol) % 2 != 0 ? -minor : minor;
}

bool GMatrix::Invert() {
  if (!IsSquare()) return false;
  switch (m_iRows) {
    case 2:
      return InvertElements<2>(m_pData);
    case 3:
      return InvertElements<3>(m_pData);
    case 4:
      return InvertElements<4>(m_pData);
  }
  const double determinant = Determinant();
  if (determinant == 0.0) return false;
  GMatrix result(m_iRows, m_iCols);
  for (std::int32_t r = 0; r < m_iRows; ++r) {
    for (std::int32_t c = 0; c < m_iCols; ++c) result.SetElement(c, r, Cofactor(r, c) / determinant);
  }
  *this = std::move(result);
  return true;
}
