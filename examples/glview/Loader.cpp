#include "glview/Loader.h"

#include <chrono>
#include <utility>

#include "glview/ModelSet.h"

Loader::~Loader() { GiveUp(); }

void Loader::Start(std::vector<std::string> aPaths, bool aTogether) {
  GiveUp();
  m_givenUp = false;
  m_share = 0;
  m_model = std::async(std::launch::async, [this, paths = std::move(aPaths), aTogether] {
    return std::make_shared<const Model>(LoadModels(paths, aTogether, [this](float aShare) {
      if (m_givenUp) throw ModelError("given up");
      m_share = aShare;
    }));
  });
}

bool Loader::IsReady() const {
  return m_model.valid() && m_model.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

void Loader::GiveUp() {
  m_givenUp = true;
  if (m_model.valid()) m_model.wait();
  m_model = {};
}
