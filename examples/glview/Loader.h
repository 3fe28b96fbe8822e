// Loader: reads models on threads of its own, while the window goes on. The host's thread asks how far it is.

#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "shared/model/Model.h"

class Loader {
 public:
  Loader() = default;
  /// Gives up what is being read, and waits for its end.
  ~Loader();
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;

  /// Starts to read, in place of what is being read, which ends by itself.
  void Start(std::vector<std::string> aPaths, bool aTogether);
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
  struct Read {
    std::atomic<float> share{0};
    std::atomic<bool> givenUp{false};
  };

  static bool IsOver(const FutureModel& aModel);

  std::shared_ptr<Read> m_read = std::make_shared<Read>();
  FutureModel m_model;
  std::vector<FutureModel> m_givenUp;  // that still run; each waits at its end
};
