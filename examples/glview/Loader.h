// Loader: reads models on a thread of its own, while the window goes on. The host's thread asks how far it
// is.

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
  /// Gives up what is being read.
  ~Loader();
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;

  /// Starts to read, in place of what is being read.
  void Start(std::vector<std::string> aPaths, bool aTogether);
  /// Whether there is something to take, now or later.
  bool IsReading() const { return m_model.valid(); }
  bool IsReady() const;
  /// How far the read is, from 0 to 1.
  float Share() const { return m_share; }
  /// Takes what was read; waits for it. @throws ModelError
  std::shared_ptr<const Model> Take() { return m_model.get(); }

 private:
  void GiveUp();

  std::future<std::shared_ptr<const Model>> m_model;
  std::atomic<float> m_share{0};
  std::atomic<bool> m_givenUp{false};
};
