// Loader: reads models on threads of its own, while the window goes on. The host's thread asks how far it is.

#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "glview/ModelFolder.h"
#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

class Loader {
 public:
  explicit Loader(const ReadLimits& aLimits) : m_limits(aLimits) {}
  /// Gives up what is being read, and waits for its end.
  ~Loader();
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;

  /// Starts to read, in place of what is being read, which ends by itself. Of a folder that is the only path,
  /// reads the first model.
  void Start(std::vector<std::string> aPaths, bool aTogether);
  /// Reads the model that many places further on in the folder; does nothing without one.
  void Step(int aBy);
  /// The place in the folder of what was asked for last, as "2 of 7"; empty without a folder.
  std::string Place() const { return m_folder.IsEmpty() ? "" : m_folder.Place(); }
  /// Whether there is something to take, now or later.
  bool IsReading() const { return m_model.valid(); }
  bool IsReady() const { return IsOver(m_model); }
  /// How far the read is, from 0 to 1.
  float Share() const { return m_read->share; }
  /// Takes what was read; waits for it. @throws ModelError
  std::shared_ptr<const Model> Take() { return m_model.get(); }

 private:
  using FutureModel = std::future<std::shared_ptr<const Model>>;
  /// What a read and its asker share.
  struct Reading {
    std::atomic<float> share{0};
    std::atomic<bool> givenUp{false};
  };

  void Read(std::vector<std::string> aPaths);
  static bool IsOver(const FutureModel& aModel);

  const ReadLimits m_limits;
  bool m_together = false;
  ModelFolder m_folder;
  std::shared_ptr<Reading> m_read = std::make_shared<Reading>();
  FutureModel m_model;
  std::vector<FutureModel> m_givenUp;  // that still run; each waits at its end
};
