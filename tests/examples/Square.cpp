#include <sstream>
#include <utility>

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
