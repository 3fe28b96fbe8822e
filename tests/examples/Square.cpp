// The models of the tests: squares, and a grid that takes time to read.

#include "Program.h"

std::string Square(const std::string& aName, const std::string& aMaterial, double aX1, double aY1, double aX2,
                   double aY2, double aZ) {
  std::ostringstream text;
  text << "o " << aName << '\n';
  if (!aMaterial.empty()) text << "usemtl " << aMaterial << '\n';
  for (const auto& [x, y] : {std::pair{aX1, aY1}, {aX2, aY1}, {aX2, aY2}, {aX1, aY2}})
    text << "v " << x << ' ' << y << ' ' << aZ << '\n';
  text << "f -4 -3 -2 -1\n";
  return text.str();
}

std::string Grid(const TestFolder& aFolder) {
  constexpr int kSide = 500;
  const std::string model = aFolder / "grid.obj";
  std::ofstream file(model);
  for (int i = 0; i < kSide * kSide; ++i) file << "v " << i % kSide << ' ' << i / kSide << " 0\n";
  for (int i = 1; i < kSide * (kSide - 1); ++i)
    file << "f " << i << ' ' << i + 1 << ' ' << i + kSide + 1 << ' ' << i + kSide << '\n';
  return model;
}
