// SheetToBlock: a build tool that reads glyph sheets and writes the module's data blocks. A block has 128 by
// 256 RGBA texels, the lowest row first. It writes one C++ source, or one file NAME.bin per sheet:
//   SheetToBlock OUTPUT.cpp NAME SHEET.txt [NAME SHEET.txt ...]
//   SheetToBlock --files FOLDER NAME SHEET.txt [NAME SHEET.txt ...]

#include <array>
#include <bitset>
#include <cctype>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kCellWidth = 8, kCellHeight = 16;
constexpr std::size_t kColumns = 16, kSheetWidth = kColumns * kCellWidth, kSheetHeight = 16 * kCellHeight;
constexpr std::size_t kStride = kCellWidth + 1;  // of neighbouring cells in the text of a sheet

using Ink = std::array<std::bitset<kSheetWidth>, kSheetHeight>;  // top row first

/// Reads a sheet: a line of codes, followed by the sixteen lines of their cells.
class SheetReader {
 public:
  explicit SheetReader(const std::string& aPath) : m_sPath(aPath), m_Input(aPath) {
    if (!m_Input) Fail("cannot be read");
  }

  Ink Read() {
    for (std::string line; NextLine(line);) {
      if (line.empty() || line[0] == ';') continue;
      ReadBand(CodesOf(line));
    }
    if (!m_Seen.all()) Fail("a code is missing");
    return m_Ink;
  }

 private:
  bool NextLine(std::string& aLine) {
    ++m_iLine;
    return static_cast<bool>(std::getline(m_Input, aLine));
  }

  std::vector<std::size_t> CodesOf(const std::string& aLine) {
    std::vector<std::size_t> codes;
    for (std::size_t at = 0; at < aLine.size(); at += kStride) {
      if (std::isdigit(static_cast<unsigned char>(aLine[at])) == 0) Fail("a code is expected");
      const std::size_t code = std::stoul(aLine.substr(at, kStride));
      if (code > 255 || m_Seen[code]) Fail("a new code from 0 to 255 is expected");
      m_Seen.set(code);
      codes.push_back(code);
    }
    return codes;
  }

  void ReadBand(const std::vector<std::size_t>& aCodes) {
    std::string line;
    for (std::size_t y = 0; y < kCellHeight; ++y) {
      if (!NextLine(line) || line.size() != aCodes.size() * kStride - 1)
        Fail("a line with one row of each cell is expected");
      for (std::size_t i = 0; i < aCodes.size(); ++i)
        ReadRow(line.substr(i * kStride, kCellWidth), aCodes[i], y);
    }
  }

  void ReadRow(const std::string& aRow, std::size_t aCode, std::size_t aLine) {
    for (std::size_t x = 0; x < kCellWidth; ++x) {
      if (aRow[x] != '#' && aRow[x] != '.') Fail("a cell contains a character other than '#' and '.'");
      const std::size_t column = aCode % kColumns * kCellWidth + x;
      m_Ink[aCode / kColumns * kCellHeight + aLine][column] = aRow[x] == '#';
    }
  }

  [[noreturn]] void Fail(const char* aWhy) const {
    throw std::runtime_error(m_sPath + ":" + std::to_string(m_iLine) + ": " + aWhy);
  }

  std::string m_sPath;
  std::ifstream m_Input;
  std::size_t m_iLine = 0;
  std::bitset<256> m_Seen;
  Ink m_Ink;
};

std::string BlockOf(const Ink& aInk) {
  std::string block;
  for (std::size_t y = kSheetHeight; y-- > 0;) {
    for (std::size_t x = 0; x < kSheetWidth; ++x)
      block += aInk[y][x] ? "\xFF\xFF\xFF\xFF" : std::string("\xFF\xFF\xFF\0", 4);
  }
  return block;
}

using Blocks = std::vector<std::pair<std::string, std::string>>;  // names and bytes

void WriteFile(const std::string& aPath, const std::string& aBytes) {
  std::ofstream out(aPath, std::ios::binary);
  out << aBytes << std::flush;
  if (!out) throw std::runtime_error(aPath + ": cannot be written");
}

std::string SourceOf(const Blocks& aBlocks) {
  std::string source =
      "// Generated from the glyph sheets by SheetToBlock.\n#include "
      "\"platform/linux/ResourceBlocks.h\"\nnamespace {\n";
  std::string table;
  for (const auto& [name, bytes] : aBlocks) {
    source += "alignas(4) constexpr unsigned char k" + name + "[] = {";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (i % (4 * kSheetWidth) == 0) source += '\n';
      source += bytes[i] != 0 ? "255," : "0,";
    }
    source += "};\n";
    table.append("{\"")
        .append(name)
        .append("\", k")
        .append(name)
        .append(", sizeof(k")
        .append(name)
        .append(")},");
  }
  return source + "constexpr ResourceBlock kBlocks[] = {" + table + "};\n}  // namespace\n" +
         "constinit std::span<const ResourceBlock> g_ResourceBlocks = kBlocks;\n";
}

void Run(std::vector<std::string> aArguments) {
  const bool files = !aArguments.empty() && aArguments[0] == "--files";
  if (files) aArguments.erase(aArguments.begin());
  if (aArguments.size() < 3 || aArguments.size() % 2 == 0)
    throw std::runtime_error("usage: SheetToBlock [--files] OUTPUT NAME SHEET.txt ...");
  Blocks blocks;
  for (std::size_t i = 1; i < aArguments.size(); i += 2)
    blocks.emplace_back(aArguments[i], BlockOf(SheetReader(aArguments[i + 1]).Read()));
  if (!files) return WriteFile(aArguments[0], SourceOf(blocks));
  for (const auto& [name, bytes] : blocks) WriteFile(aArguments[0] + '/' + name + ".bin", bytes);
}

}  // namespace

int main(int aCount, char** aValues) {
  try {
    Run({aValues + 1, aValues + aCount});
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "SheetToBlock: " << error.what() << '\n';
    return 1;
  }
}
