/// @file
/// The viewers of a context as they lie over each other, header only: which one is seen at a pixel. Any
/// thread.

#pragma once

#include <gllib/GLLibHost.h>
#include <gllib/GLViewMath.h>

#include <algorithm>
#include <utility>
#include <vector>

/// The viewers of a context in the order in which they are drawn: the last one is on top. Any thread.
inline std::vector<GLPtr<IGLViewer>> GLViewersOf(IGLContext& aContext) {
  struct Member {
    int block, slot;  // of the collection
    GLPtr<IGLViewer> viewer;
  };
  const auto all = GLCreate<IGLCollection>(CLSID_GLCollection);
  if (!all || FAILED(aContext.EnumViewers(all.Get()))) return {};
  std::vector<Member> members;
  GLPOSITION at{};
  GLPtr<IUnknown> member;
  for (HRESULT r = all->GetFirst(&at, member.Put()); r == S_OK; r = all->GetNext(&at, member.Put())) {
    // The copy fills block after block, each from its highest slot downward.
    int block = 0;
    for (int end = 10, growth = 20; at.m_iIndex >= end; ++block) {
      end += growth;
      growth = std::min(2 * growth, 100);
    }
    members.push_back({block, at.m_iIndex, member.As<IGLViewer>()});
  }
  std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) {
    return a.block != b.block ? a.block < b.block : a.slot > b.slot;
  });
  std::vector<GLPtr<IGLViewer>> viewers;
  viewers.reserve(members.size());
  for (Member& m : members) viewers.push_back(std::move(m.viewer));
  return viewers;
}

/// The viewer that is seen at a pixel: the topmost visible one whose rectangle holds it. Any thread.
/// @return null where no viewer is
inline GLPtr<IGLViewer> GLViewerAt(IGLContext& aContext, const GLPixelPlace& aPixel) {
  const auto viewers = GLViewersOf(aContext);
  const auto found = std::find_if(viewers.rbegin(), viewers.rend(), [&](const GLPtr<IGLViewer>& aViewer) {
    LONG visible = 0;
    aViewer->IsVisible(&visible);
    return visible != 0 && GLViewGeometry::Of(aContext, *aViewer.Get()).Contains(aPixel);
  });
  return found != viewers.rend() ? *found : nullptr;
}
