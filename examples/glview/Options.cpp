// Options: parses and checks the command line. Any thread.

#include "glview/Options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cxxopts.hpp>
#include <string_view>
#include <vector>

#include "shared/model/ModelReader.h"

namespace {

constexpr const char* kInTheWindow = R"(
In the window: drag to turn, right or middle drag to pan, wheel to zoom; click to pick a part, Shift-drag to
pick a box, Ctrl-drag to pick only parts completely inside; 1 and 4 views, W shading, M textures, F fog, A axes,
T text, R resets the camera; V next standard view, arrows walk and turn; S cuts the model perpendicular to x, y
or z, - and + or the slider move the cut; D measures the distance between two clicks, or the angle at the
second of three; Page Up and Page Down step through a folder's models; C writes a picture at twice the
window's size to a numbered PNG file; Esc exits.
Files dropped on the window replace the models. No settings are saved.

Exit status: 0 success; 1 no display, no context, a file cannot be written, or nothing to measure at a pixel;
2 invalid command line, or a model cannot be read.
)";

constexpr int kLargestSide = 8192;
constexpr double kSmallestZoom = 0.01, kLargestZoom = 64;
constexpr int kMostSamples = 64;

/// Splits a text into numbers at a separator. @return no numbers if a field is not a number
template <class Number>
std::vector<Number> Numbers(std::string_view aText, char aSeparator) {
  std::vector<Number> numbers;
  const char* at = aText.data();
  const char* const end = at + aText.size();
  for (;;) {
    Number number{};
    const auto [next, error] = std::from_chars(at, end, number);
    if (error != std::errc{}) return {};
    numbers.push_back(number);
    if (next == end) return numbers;
    if (*next != aSeparator) return {};
    at = next + 1;
  }
}

Shade ParseShade(std::string_view aText) {
  constexpr std::array<std::pair<std::string_view, Shade>, 4> kShades = {{{"shaded", Shade::Shaded},
                                                                          {"wire", Shade::Wire},
                                                                          {"hidden", Shade::Hidden},
                                                                          {"points", Shade::Points}}};
  for (const auto& [name, shade] : kShades) {
    if (aText == name) return shade;
  }
  throw UsageError("--shade takes shaded, wire, hidden or points, not '" + std::string(aText) + "'");
}

void ParseSize(std::string_view aText, Options& aOptions) {
  const auto size = Numbers<int>(aText, 'x');
  if (size.size() != 2 || size[0] < 1 || size[1] < 1 || size[0] > kLargestSide || size[1] > kLargestSide) {
    throw UsageError("--size takes WIDTHxHEIGHT, each from 1 to 8192, not '" + std::string(aText) + "'");
  }
  aOptions.width = size[0];
  aOptions.height = size[1];
}

void ParseTurn(std::string_view aText, Options& aOptions) {
  const auto angles = Numbers<double>(aText, ',');
  if (angles.size() != 2 || !std::isfinite(angles[0]) || !std::isfinite(angles[1])) {
    throw UsageError("--turn takes YAW,PITCH in degrees, not '" + std::string(aText) + "'");
  }
  aOptions.yaw = angles[0];
  aOptions.pitch = angles[1];
}

std::string ParseFile(const std::string& aText) {
  if (aText.empty()) throw UsageError("--out takes the name of a file");
  return aText;
}

double ParseZoom(std::string_view aText) {
  const auto zoom = Numbers<double>(aText, ',');
  if (zoom.size() != 1 || !(zoom[0] >= kSmallestZoom && zoom[0] <= kLargestZoom)) {
    throw UsageError("--zoom takes a factor from 0.01 to 64, not '" + std::string(aText) + "'");
  }
  return zoom[0];
}

int ParseSamples(std::string_view aText) {
  const auto samples = Numbers<int>(aText, ',');
  if (samples.size() != 1 || samples[0] < 1 || samples[0] > kMostSamples) {
    throw UsageError("--fsaa takes a number of samples from 1 to 64, not '" + std::string(aText) + "'");
  }
  return samples[0];
}

/// Parses a limit of reading.
unsigned ParseLimit(std::string_view aOption, std::string_view aText) {
  constexpr unsigned kLargest = 1 << 24;
  const auto limit = Numbers<unsigned>(aText, ',');
  if (limit.size() != 1 || limit[0] < 1 || limit[0] > kLargest) {
    throw UsageError(std::string(aOption) + " takes a number from 1 to 16777216, not '" + std::string(aText) +
                     "'");
  }
  return limit[0];
}

GLDATA_RGBA ParseColor(std::string_view aText) {
  unsigned color = 0;
  const char* const end = aText.data() + aText.size();
  const auto [next, error] = std::from_chars(aText.data(), end, color, 16);
  if (error != std::errc{} || next != end || aText.size() != 6) {
    throw UsageError("--background takes a colour as RRGGBB, not '" + std::string(aText) + "'");
  }
  const auto channel = [&](int aShift) { return static_cast<float>(color >> aShift & 0xFF) / 255.0f; };
  return {channel(16), channel(8), channel(0), 1.0f};
}

PixelBox ParsePick(std::string_view aText) {
  const auto point = Numbers<int>(aText, ',');
  if (point.size() != 2) throw UsageError("--pick takes X,Y in pixels, not '" + std::string(aText) + "'");
  return {.x1 = point[0], .y1 = point[1], .x2 = point[0], .y2 = point[1], .point = true};
}

PixelBox ParsePickBox(std::string_view aText) {
  constexpr std::string_view kInside = ",inside";
  const bool inside = aText.ends_with(kInside);
  const auto corners = Numbers<int>(inside ? aText.substr(0, aText.size() - kInside.size()) : aText, ',');
  if (corners.size() != 4) {
    throw UsageError(
        "--pick-box takes X1,Y1,X2,Y2 in pixels, with ',inside' "
        "or without, not '" +
        std::string(aText) + "'");
  }
  return {.x1 = corners[0], .y1 = corners[1], .x2 = corners[2], .y2 = corners[3], .inside = inside};
}

Section ParseSection(std::string_view aText) {
  const std::string_view axes = "xyz";
  const auto axis = aText.empty() ? axes.npos : axes.find(aText.front());
  Section section{static_cast<int>(axis)};
  if (aText.size() > 1) {
    const auto share = aText[1] == ',' ? Numbers<double>(aText.substr(2), ',') : std::vector<double>();
    section.share = share.size() == 1 ? share[0] : -1;
  }
  if (axis == axes.npos || !(section.share >= 0 && section.share <= 1)) {
    throw UsageError("--section takes x, y or z and a share from 0 to 1, not '" + std::string(aText) + "'");
  }
  return section;
}

std::vector<int> ParseMeasure(std::string_view aText) {
  auto pixels = Numbers<int>(aText, ',');
  if (pixels.size() != 4 && pixels.size() != 6) {
    throw UsageError("--measure takes two or three X,Y in pixels, not '" + std::string(aText) + "'");
  }
  return pixels;
}

void RequireInside(const Options& aOptions) {
  const auto& box = *aOptions.pick;
  const auto within = [&](int aX, int aY) {
    return aX >= 0 && aY >= 0 && aX <= aOptions.width && aY <= aOptions.height;
  };
  if (!within(box.x1, box.y1) || !within(box.x2, box.y2)) {
    throw UsageError("the pick lies outside of the picture, which is " + std::to_string(aOptions.width) +
                     "x" + std::to_string(aOptions.height));
  }
}

/// Defines the options for cxxopts. Each value is a text; the other functions of this file parse it.
cxxopts::Options CommandLine() {
  cxxopts::Options command("glview",
                           "usage: glview [options] MODEL... | FOLDER\n\n"
                           "Shows models in a window, side by side: " +
                               std::string(kReadableFiles) + ".");
  constexpr std::size_t kWidth = 100;
  command.set_width(kWidth).custom_help("");
  auto add = [add = command.add_options()](const char* aName, const char* aValue, const char* aText) mutable {
    add(aName, aText, cxxopts::value<std::string>(), aValue);
  };
  auto addSwitch = [add = command.add_options()](const char* aName, const char* aText) mutable {
    add(aName, aText);
  };
  addSwitch("together", "place several models by their own coordinates");
  add("out", "FILE.png", "draw one picture without a display, and exit");
  add("zoom", "F", "enlarge that picture by F, at full resolution (1)");
  add("size", "WxH", "size of the window or picture (1024x768)");
  add("background", "RRGGBB", "colour behind the model, in hexadecimal (212630)");
  add("fsaa", "N", "smooth the window's edges by up to N samples per pixel, if supported");
  add("shade", "MODE", "shaded, wire, hidden or points");
  addSwitch("fog", "let distant parts fade into the background");
  addSwitch("ortho", "parallel projection");
  add("views", "1|4", "one view, or four: front, right, top and free");
  add("turn", "YAW,PITCH", "position of the eye, in degrees (30,15)");
  addSwitch("axes", "show the axes");
  addSwitch("text", "show the models' names");
  add("pick", "X,Y", "print the name of the part at a pixel, and exit");
  add("pick-box", "X1,Y1,X2,Y2[,inside]",
      "print the names of the parts in a box, or of those completely inside it");
  add("section", "AXIS[,SHARE]", "cut the model perpendicular to x, y or z, at a share of its size (0.5)");
  add("measure", "X1,Y1,X2,Y2[,X3,Y3]",
      "print the distance between the points at two pixels, or the angle at the second of three, in degrees");
  add("read-memory", "MIB", "memory limit for reading a model (half of the available memory)");
  add("read-time", "SECONDS", "time limit for reading a model (15, and 1 per MiB of the file)");
  addSwitch("help", "this text");
  return command;
}

int ParseViews(const std::string& aText) {
  if (aText != "1" && aText != "4") throw UsageError("--views takes 1 or 4, not '" + aText + "'");
  return aText == "4" ? 4 : 1;
}

}  // namespace

std::string HelpText() { return CommandLine().help({}, false) + kInTheWindow; }

Options ParseOptions(int argc, const char* const* argv) try {
  const cxxopts::ParseResult given = CommandLine().parse(argc, argv);
  Options options;
  options.help = given["help"].as<bool>();
  options.together = given["together"].as<bool>();
  options.fog = given["fog"].as<bool>();
  options.ortho = given["ortho"].as<bool>();
  options.axes = given["axes"].as<bool>();
  options.text = given["text"].as<bool>();
  for (const cxxopts::KeyValue& one : given.arguments()) {
    const std::string &option = one.key(), &value = one.value();
    if (option == "out") options.out = ParseFile(value);
    if (option == "size") ParseSize(value, options);
    if (option == "zoom") options.zoom = ParseZoom(value);
    if (option == "background") options.background = ParseColor(value);
    if (option == "fsaa") options.samples = ParseSamples(value);
    if (option == "shade") options.shade = ParseShade(value);
    if (option == "views") options.views = ParseViews(value);
    if (option == "turn") ParseTurn(value, options);
    if (option == "pick") options.pick = ParsePick(value);
    if (option == "pick-box") options.pick = ParsePickBox(value);
    if (option == "section") options.section = ParseSection(value);
    if (option == "measure") options.measure = ParseMeasure(value);
    if (option == "read-memory") options.limits.mebibytes = ParseLimit("--read-memory", value);
    if (option == "read-time") options.limits.seconds = ParseLimit("--read-time", value);
  }
  options.models = given.unmatched();
  if (options.help) return options;
  if (options.models.empty()) throw UsageError("no model given; --help shows the usage");
  if (options.zoom != 1 && options.out.empty()) throw UsageError("--zoom requires --out");
  if (options.pick) RequireInside(options);
  return options;
} catch (const cxxopts::exceptions::exception& error) {
  throw UsageError(std::string(error.what()) + "; --help lists the options");
}
