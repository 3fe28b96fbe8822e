// Loader: reads models on separate threads while the window responds. The host's thread polls the
// progress.

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
  /// Cancels the running read and waits for its end.
  ~Loader();
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;

  /// Starts a read and cancels the running one, without waiting for its end. If the only path is a folder,
  /// reads its first model.
  void Start(std::vector<std::string> aPaths, bool aTogether);
  /// Reads the model aBy positions further on in the folder. Does nothing without a folder.
  void Step(int aBy);
  /// Returns the position of the requested model in the folder, as "2 of 7"; empty without a folder.
  std::string Place() const { return m_folder.IsEmpty() ? "" : m_folder.Place(); }
  /// Returns whether a read is running or its result has not been taken yet.
  bool IsReading() const { return m_model.valid(); }
  bool IsReady() const { return IsOver(m_model); }
  /// Returns the progress of the read, from 0 to 1.
  float Share() const { return m_read->share; }
  /// Waits for the read and returns its model. @throws ModelError
  std::shared_ptr<const Model> Take() { return m_model.get(); }

 private:
  using FutureModel = std::future<std::shared_ptr<const Model>>;
  /// State that a reader thread and the host's thread share.
  struct Reading {
    std::atomic<float> share{0};
    std::atomic<bool> cancelled{false};
  };

  void Read(std::vector<std::string> aPaths);
  static bool IsOver(const FutureModel& aModel);

  const ReadLimits m_limits;
  bool m_together = false;
  ModelFolder m_folder;
  std::shared_ptr<Reading> m_read = std::make_shared<Reading>();
  FutureModel m_model;
  std::vector<FutureModel> m_cancelled;  // cancelled reads still running; the destructor of each future waits
};
