// Loader: starts reader threads and takes their results. Host's thread.

#include "glview/Loader.h"

#include <chrono>
#include <utility>

#include "glview/ModelSet.h"

Loader::~Loader() { m_read->cancelled = true; }

void Loader::Start(std::vector<std::string> aPaths, bool aTogether) {
  m_together = aTogether;
  m_folder = aPaths.size() == 1 ? ModelFolder(aPaths.front()) : ModelFolder();
  Read(m_folder.IsEmpty() ? std::move(aPaths) : std::vector{m_folder.Model()});
}

void Loader::Step(int aBy) {
  if (m_folder.IsEmpty()) return;
  m_folder.Step(aBy);
  Read({m_folder.Model()});
}

void Loader::Read(std::vector<std::string> aPaths) {
  std::erase_if(m_cancelled, IsOver);
  m_read->cancelled = true;
  if (m_model.valid()) m_cancelled.push_back(std::move(m_model));
  m_read = std::make_shared<Reading>();
  m_model = std::async(std::launch::async, [read = m_read, paths = std::move(aPaths), limits = m_limits,
                                            together = m_together] {
    return std::make_shared<const Model>(LoadModels(paths, limits, together, [&](float aShare) {
      if (read->cancelled) throw ModelError("cancelled");
      read->share = aShare;
    }));
  });
}

bool Loader::IsOver(const FutureModel& aModel) {
  return aModel.valid() && aModel.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}
