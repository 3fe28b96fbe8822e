// The process in which glview reads a model: limits, inherited resources, and the block that it returns.

#include <gmock/gmock.h>
#include <signal.h>

#include "Program.h"
#include "Screen.h"
#include "shared/model/ImageFile.h"
#include "shared/model/ModelBytes.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// glview while its reader reads a large model.
class ReaderProcess : public testing::Test {
 protected:
  ~ReaderProcess() override {
    if (m_glview > 0) {
      kill(m_glview, SIGKILL);
      WaitFor(m_glview);
    }
  }

  /// Returns whether the reader has limited its processor time.
  bool HasLimits(int aSeconds) const {
    std::ifstream limits(Proc("limits"));
    for (std::string line; std::getline(limits, line);) {
      int seconds = 0;
      if (std::sscanf(line.c_str(), "Max cpu time %d", &seconds) == 1) return seconds == aSeconds;
    }
    return false;
  }
  /// Starts glview, and stops its reader during the reading.
  void StartAndStop(int aSeconds) {
    m_glview = Start({GLLIB_EXAMPLES_FOLDER "/glview", "--read-time", std::to_string(aSeconds), "--out",
                      m_folder / "out.png", Grid(m_folder)},
                     "", m_folder / "out", m_folder / "err");
    ASSERT_TRUE(Eventually([&] {
      const std::string self = std::to_string(m_glview);
      std::ifstream("/proc/" + self + "/task/" + self + "/children") >> m_reader;
      return m_reader > 0 && HasLimits(aSeconds + 1);
    }));
    ASSERT_EQ(kill(m_reader, SIGSTOP), 0);
  }
  std::string Proc(const std::string& aFile) const {
    return "/proc/" + std::to_string(m_reader) + "/" + aFile;
  }
  int Status() { return WaitFor(std::exchange(m_glview, -1)); }

  TestFolder m_folder;
  pid_t m_glview = -1, m_reader = -1;
};

TEST_F(ReaderProcess, InheritsOnlyItsFiles) {
  setenv("GLLIB_TEST_VARIABLE", "1", 1);
  StartAndStop(100);
  unsetenv("GLLIB_TEST_VARIABLE");
  std::set<std::string> files;
  for (const auto& file : std::filesystem::directory_iterator(Proc("fd")))
    files.insert(file.path().filename());
  EXPECT_THAT(files, testing::IsSubsetOf({"0", "1", "2", "3", "4", "5"})) << "5 is the model";
  std::string environment;
  std::getline(std::ifstream(Proc("environ")), environment);
  EXPECT_THAT(environment, testing::Not(HasSubstr("GLLIB_TEST_VARIABLE")));
}

TEST_F(ReaderProcess, IsEndedAtItsTimeLimit) {
  StartAndStop(3);
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(m_folder.Get("err"),
            "glview: cannot read " + m_folder / "grid.obj" + ": reading it takes longer than 3 s\n");
}

TEST_F(ReaderProcess, MayCrash) {
  StartAndStop(100);
  kill(m_reader, SIGBUS);
  kill(m_reader, SIGCONT);
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(m_folder.Get("err"),
            "glview: cannot read " + m_folder / "grid.obj" + ": its reader was ended by signal 7\n");
}

TEST_F(ReaderProcess, EndsWithTheViewer) {
  StartAndStop(100);
  kill(m_glview, SIGKILL);
  EXPECT_EQ(Status(), -1);
  EXPECT_TRUE(Eventually([&] {
    std::string state;
    std::getline(std::ifstream(Proc("stat")), state);
    return state.empty() || state.find(") Z") != std::string::npos;
  }));
}

TEST_F(ReaderProcess, RefusesAFileThatExceedsItsMemory) {
  const std::string header =
      "ply\nformat ascii 1.0\nelement vertex %\nproperty float x\nproperty float y\nproperty float z\n"
      "element face 1\nproperty list uchar int vertex_indices\nend_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";
  for (const char* count : {"100000000000", "4000000000", "100000000"}) {
    std::string text = header;
    text.replace(text.find('%'), 1, count);
    const std::string model = m_folder.Put("claim.ply", text);
    const Outcome outcome =
        RunProgram("glview", {"--read-memory", "300", "--out", m_folder / "out.png", model});
    EXPECT_EQ(outcome.status, 2) << count;
    EXPECT_THAT(outcome.err, StartsWith("glview: cannot read " + model)) << count;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    if (!GLLIB_SANITIZED) {  // allocators of the sanitizers end the process with other messages
      EXPECT_THAT(outcome.err, HasSubstr("more than 300 MiB of memory")) << count;
    }
  }
}

/// Returns a triangle with colours and an image.
Model Sample() {
  Part part;
  part.name = "part";
  part.vertices.resize(3);
  part.triangles = {{0, 1, 2}};
  part.image = PixmapOf(Picture(2, 1));
  part.places = {{0, 0}, {1, 0}, {1, 1}};
  part.colors = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 0.5f}};
  Model model;
  model.name = "sample";
  model.parts = {part, part};
  Measure(model);
  return model;
}

std::vector<std::byte> BytesOf(const Model& aModel) {
  std::vector<std::byte> bytes;
  WriteModel(aModel, [&](const void* aBytes, std::size_t aSize) {
    const auto* first = static_cast<const std::byte*>(aBytes);
    bytes.insert(bytes.end(), first, first + aSize);
  });
  return bytes;
}

TEST(ModelBytes, AreRefusedIfDamaged) {
  const auto whole = BytesOf(Sample());
  EXPECT_EQ(ModelFromBytes(whole).parts.size(), 2u);
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_THROW(ModelFromBytes(std::span(whole).first(size)), ModelError) << "truncated after " << size;
  auto longer = whole;
  longer.push_back({});
  EXPECT_THROW(ModelFromBytes(longer), ModelError);
  // Each byte is changed in turn: the block is refused, or the model is consistent.
  for (std::size_t i = 0; i < whole.size(); ++i) {
    auto damaged = whole;
    damaged[i] ^= std::byte{0xFF};
    try {
      for (const Part& part : ModelFromBytes(damaged).parts) {
        for (const auto& triangle : part.triangles) {
          for (const std::uint32_t corner : triangle) EXPECT_LT(corner, part.vertices.size()) << i;
        }
        EXPECT_TRUE(part.colors.empty() || part.colors.size() == part.vertices.size()) << i;
        EXPECT_TRUE(!part.image || part.places.size() == part.vertices.size()) << i;
      }
    } catch (const ModelError&) {
    }
  }
}

}  // namespace
