// glview without a display: refused command lines and models, picks, measuring and pictures.

#include "Program.h"
#include "shared/Picture.h"

namespace {

constexpr int kSide = 300;
const std::vector<std::string> kFromTheFront = {"--turn", "0,0", "--ortho", "--size", "300x300"};

constexpr const char* kMaterials = R"(newmtl plain
Kd 0.7 0.7 0.7
newmtl front
Kd 0.8 0.05 0.05
%
newmtl behind
Kd 0.05 0.8 0.05
)";

class Glview : public ::testing::Test {
 protected:
  /// Writes four upright squares: one in front of another and further to the right, and two in corners.
  /// @param aFrontOpacity text for the material file
  std::string Squares(const std::string& aFrontOpacity = "d 1") const {
    std::string materials = kMaterials;
    materials.replace(materials.find('%'), 1, aFrontOpacity);
    Put("squares.mtl", materials);
    return Put("squares.obj", "mtllib squares.mtl\n" + Square("low", "plain", -2, -2, -1, -1) +
                                  Square("front", "front", -1, -1, 1, 1, 1) +
                                  Square("behind", "behind", -0.5, -0.5, 1.8, 0.5, -1) +
                                  Square("corner", "plain", 1.5, 1.5, 2, 2));
  }

  Outcome FromTheFront(const std::string& aModel, std::vector<std::string> aArguments) const {
    aArguments.insert(aArguments.end(), kFromTheFront.begin(), kFromTheFront.end());
    aArguments.push_back(aModel);
    return RunProgram("glview", aArguments);
  }

  Picture PictureOf(const std::string& aModel, std::vector<std::string> aArguments) const {
    const std::string file = m_folder / "picture.png";
    aArguments.insert(aArguments.end(), {"--out", file});
    const Outcome outcome = FromTheFront(aModel, aArguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    Picture picture;
    EXPECT_TRUE(ReadPng(file, picture));
    return picture;
  }

  /// Returns the place of a point of the squares in a picture: the sphere through the outer corners fills 96
  /// % of it.
  static int Pixel(double aCoordinate) {
    return static_cast<int>(std::floor((aCoordinate / (1.04 * std::hypot(2, 2)) + 1) * kSide / 2));
  }
  static const std::uint8_t* At(const Picture& aPicture, double aX, double aY) {
    return aPicture.At(Pixel(aX), Pixel(-aY));
  }

  std::string Put(const std::string& aName, std::string_view aText) const {
    return m_folder.Put(aName, aText).string();
  }

  TestFolder m_folder;
};

/// Returns whether anything is drawn within two pixels of a place.
bool IsDrawn(const Picture& aPicture, const std::uint8_t* aPlace) {
  const std::uint8_t* background = aPicture.At(0, 0);
  const auto offset = static_cast<int>(aPlace - aPicture.pixels.data()) / 4;
  for (int dy = -2; dy <= 2; ++dy) {
    for (int dx = -2; dx <= 2; ++dx) {
      const std::uint8_t* pixel =
          &aPicture.pixels[static_cast<std::size_t>(offset + dy * aPicture.width + dx) * 4];
      if (!std::equal(pixel, pixel + 3, background)) return true;
    }
  }
  return false;
}

void ExpectRefusal(const std::vector<std::string>& aArguments, const std::string& aReason = "") {
  SCOPED_TRACE(::testing::PrintToString(aArguments));
  const Outcome outcome = RunProgram("glview", aArguments);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(outcome.err.starts_with("glview: " + aReason)) << outcome.err;
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Glview, RefusesInvalidCommandLines) {
  ExpectRefusal({});
  ExpectRefusal({"--out"});
  ExpectRefusal({"--out", "", Squares()}, "--out takes");
  std::istringstream lines(
      "--frobnicate|--size 0x10|--size 100|--size 100x100x|--size 100000x10|--shade cubist|"
      "--views 3|--turn 1|--turn nan,0|--pick 1|--pick -1,5|--pick-box 1,2,3|"
      "--pick-box 1,2,3,4,outside|--size 50x50 --pick 60,10|--zoom 2|--zoom 0 --out x.png|"
      "--zoom nan --out x.png|--background 12345|--background 12345g|--fsaa 0|--section w|"
      "--section x,2|--section x0.5|--measure 1,2,3|--read-memory 0|--read-time 1.5");
  for (std::string line; std::getline(lines, line, '|');) {
    std::istringstream in(line);
    std::vector<std::string> arguments{std::istream_iterator<std::string>(in), {}};
    arguments.push_back(Squares());
    ExpectRefusal(arguments);
  }
}

TEST_F(Glview, RefusesMissingAndDamagedModels) {
  const std::vector<std::pair<std::string, std::string>> models = {
      {m_folder / "missing.obj", "no such file"},
      {m_folder / ".", "a folder, not a model"},
      {Put("empty.obj", ""), "cannot read"},
      {Put("garbage.obj", "\x7f\x45\x4c\x46 not a model\n"), ""},
      {Put("text.txt", "not a model"), "cannot read"},
      {Put("cut.ply", "ply\nformat ascii 1.0\nelement vertex 3\n"), "cannot read"},
      {Put("nan.obj", "v 0 0 nan\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), "a coordinate is not a number"},
      {Put("points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\n"), ""},
  };
  for (const auto& [model, reason] : models) ExpectRefusal({"--out", m_folder / "out.png", model}, reason);
  EXPECT_FALSE(std::filesystem::exists(m_folder / "out.png"));
}

TEST_F(Glview, ReportsAFailedWrite) {
  const Outcome outcome = RunProgram("glview", {"--out", m_folder / "no/folder/out.png", Squares()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.starts_with("glview: cannot write ")) << outcome.err;
}

/// Returns the options in a text. In a manual page each dash follows a backslash.
std::set<std::string> OptionsIn(std::string aText) {
  std::erase(aText, '\\');
  std::set<std::string> options;
  for (auto at = aText.find("--"); at != std::string::npos; at = aText.find("--", at + 2)) {
    const auto end = aText.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at);
    options.insert(aText.substr(at, end - at));
  }
  return options;
}

TEST_F(Glview, HelpAndManualListTheSameOptions) {
  const Outcome outcome = RunProgram("glview", {"--help"});
  EXPECT_EQ(outcome.status, 0);
  std::ostringstream page;
  page << std::ifstream(GLLIB_MANUAL_PAGE).rdbuf();
  EXPECT_GT(OptionsIn(outcome.out).size(), 14u);
  EXPECT_EQ(OptionsIn(outcome.out), OptionsIn(page.str()));
}

TEST_F(Glview, PlacesModelsSideBySideOrTogether) {
  // One model is small, the other is far away and large. Side by side each fills one half; together the small
  // one is a dot.
  const std::string small = Put("small.obj", Square("it", "", 0, 0, 2, 2)),
                    large = Put("large.obj", Square("it", "", 1000, 0, 3000, 2));
  const auto picked = [&](int aX, std::vector<std::string> aMore) {
    aMore.insert(aMore.end(), {"--turn", "0,0", "--ortho", "--size", "400x200", "--pick",
                               std::to_string(aX) + ",100", small, large});
    return RunProgram("glview", aMore).out;
  };
  EXPECT_EQ(picked(150, {}), "small.obj: it\n");
  EXPECT_EQ(picked(250, {}), "large.obj: it\n");
  EXPECT_EQ(picked(150, {"--together"}), "");
}

TEST_F(Glview, PicksPartsAtAPixelAndInABox) {
  const auto pixel = [](double aX, double aY) {
    return std::to_string(Pixel(aX)) + "," + std::to_string(Pixel(-aY));
  };
  const auto box = [&](double aX1, double aY1, double aX2, double aY2) {
    return pixel(aX1, aY1) + "," + pixel(aX2, aY2);
  };
  const std::vector<std::tuple<std::string, std::string, std::string>> picks = {
      {"--pick", pixel(0, 0), "front\n"},
      {"--pick", pixel(1.5, 0), "behind\n"},
      {"--pick", pixel(-1.5, -1.5), "low\n"},
      {"--pick", pixel(1.75, 1.75), "corner\n"},
      {"--pick", pixel(-1.5, 1.5), ""},
      {"--pick-box", "0,0,300,300", "low\nfront\nbehind\ncorner\n"},
      {"--pick-box", "300,300,0,0,inside", "low\nfront\nbehind\ncorner\n"},
      {"--pick-box", box(-1.2, -1.2, 1.2, 1.2), "low\nfront\nbehind\n"},
      {"--pick-box", box(1.2, 1.2, -1.2, -1.2) + ",inside", "front\n"},
      {"--pick-box", box(-0.2, -0.2, 0.2, 0.2) + ",inside", ""},
  };
  const std::string model = Squares();
  for (const char* shade : {"shaded", "wire"}) {  // parts of a wire model are picked by their faces too
    for (const auto& [option, where, names] : picks) {
      const Outcome outcome = FromTheFront(model, {"--shade", shade, option, where});
      EXPECT_EQ(outcome.status, 0) << outcome.err;
      EXPECT_EQ(outcome.out, names) << shade << " " << option << " " << where;
    }
  }
}

TEST_F(Glview, MeasuresInUnitsOfTheModel) {
  const auto measured = [&](std::vector<std::pair<double, double>> aPoints) {
    std::string pixels;
    for (const auto& [x, y] : aPoints) {
      if (!pixels.empty()) pixels += ',';
      pixels += std::to_string(Pixel(x));
      pixels += ',';
      pixels += std::to_string(Pixel(-y));
    }
    return FromTheFront(Squares(), {"--measure", pixels});
  };
  const double pixel = 2 * 1.04 * std::hypot(2, 2) / kSide;
  EXPECT_NEAR(std::stod(measured({{-0.5, 0.4}, {0.5, -0.4}}).out), std::hypot(1, 0.8), 2 * pixel);
  EXPECT_NEAR(std::stod(measured({{0, 0.8}, {1.5, 0}}).out), std::hypot(1.5, 0.8, 2), 2 * pixel)
      << "from the front square to the one 2 units behind it";
  EXPECT_NEAR(std::stod(measured({{0.6, 0}, {0, 0}, {0, 0.6}}).out), 90, 2);
  EXPECT_EQ(measured({{0, 0}, {-1.5, 1.5}}).status, 1) << "beside the model";
}

TEST_F(Glview, DrawsEachShading) {
  const std::string model = Squares();
  const struct {
    const char* name;
    double x, y;
    std::array<bool, 4> drawn;
  } places[] = {
      {"inside the front face", -0.7, 0.2, {true, false, false, false}},
      {"its upper edge", 0.3, 1, {true, true, true, false}},
      {"its corner", 1, 1, {true, true, true, true}},
      {"the edge behind it", -0.5, 0.2, {true, true, false, false}},
      {"the visible edge of the square behind", 1.8, 0.2, {true, true, true, false}},
      {"nothing", -1.5, 1.5, {false, false, false, false}},
  };
  for (std::size_t i = 0; i < 4; ++i) {
    const char* shade = std::array{"shaded", "wire", "hidden", "points"}[i];
    const Picture picture = PictureOf(model, {"--shade", shade});
    for (const auto& place : places)
      EXPECT_EQ(IsDrawn(picture, At(picture, place.x, place.y)), place.drawn[i])
          << place.name << ' ' << shade;
  }
}

TEST_F(Glview, ShowsPartsBehindGlass) {
  const Picture solid = PictureOf(Squares(), {});
  const Picture glass = PictureOf(Squares("d 0.5"), {});
  const int green = 1;
  // The part behind the glass is later in the file, but must be drawn before the glass.
  EXPECT_GT(At(glass, 0.7, 0.3)[green], At(solid, 0.7, 0.3)[green] + 40);
  EXPECT_GT(At(glass, 0.7, 0.3)[0], At(glass, 1.5, 0.3)[0] + 40) << "the glass colours it red";
  EXPECT_EQ(At(glass, 1.5, 0.3)[green], At(solid, 1.5, 0.3)[green]) << "no change beside the glass";
}

TEST_F(Glview, BackgroundIsBehindTheModelAndInItsFog) {
  const Picture picture = PictureOf(Squares(), {"--background", "10a0f0", "--fog"});
  const std::uint8_t background[] = {0x10, 0xA0, 0xF0};
  EXPECT_TRUE(std::equal(background, background + 3, picture.At(0, 0)));
  EXPECT_GT(At(picture, 1.5, 0)[2], 100) << "the far side fades into the background";
}

TEST_F(Glview, DrawsTextures) {
  // A PNG file, red below and blue above, and a bitmap file of one green pixel.
  Picture image(2, 2);
  image.pixels = {255, 0, 0, 255, 255, 0, 0, 255, 0, 0, 255, 255, 0, 0, 255, 255};
  ASSERT_TRUE(WritePng(image, m_folder / "image.png"));
  std::string bitmap(58, '\0');
  bitmap.replace(0, 2, "BM");
  for (const auto& [offset, value] : {std::pair{10, 54}, {18, 1}, {22, 1}, {26, 1}, {28, 24}, {55, 255}})
    bitmap[static_cast<std::size_t>(offset)] = static_cast<char>(value);
  Put("image.bmp", bitmap);
  Put("walls.mtl",
      "newmtl png\nKd 1 1 1\nmap_Kd image.png\nnewmtl bmp\nKd 1 1 1\nmap_Kd image.bmp\n"
      "newmtl lost\nKd 1 1 1\nmap_Kd lost.png\n");
  const std::string model =
      Put("walls.obj",
          "mtllib walls.mtl\nvt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
          "v -2 -2 0\nv 0 -2 0\nv 0 0 0\nv -2 0 0\nv 0 2 0\nv -2 2 0\nv 2 0 0\nv 2 2 0\n"
          "usemtl png\nf 1/1 2/2 3/3 4/4\nusemtl bmp\nf 4/1 3/2 5/3 6/4\nusemtl lost\nf 3/1 7/2 8/3 5/4\n");
  const std::string file = m_folder / "picture.png";
  const Outcome outcome = FromTheFront(model, {"--out", file});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "cannot read the texture lost.png\n");
  Picture picture;
  ASSERT_TRUE(ReadPng(file, picture));
  EXPECT_GT(At(picture, -1, -1.5)[0], At(picture, -1, -1.5)[2] + 100) << "red below";
  EXPECT_GT(At(picture, -1, -0.5)[2], At(picture, -1, -0.5)[0] + 100) << "blue above";
  EXPECT_GT(At(picture, -1, 1)[1], At(picture, -1, 1)[0] + 100) << "green";
  EXPECT_TRUE(IsDrawn(picture, At(picture, 1, 1))) << "drawn without its image";
}

}  // namespace
