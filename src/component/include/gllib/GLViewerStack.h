/// @file
/// The drawing order of the viewers of a context, header only: finds the topmost viewer at a pixel. Any
/// thread.

#pragma once

#include <gllib/GLLibHost.h>
#include <gllib/GLViewMath.h>

#include <algorithm>
#include <utility>
#include <vector>

/// Returns the viewers of a context in drawing order: the last one is on top. Any thread.
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
    // The copy fills one block after another, each from its highest slot downward.
    int block = 0;
    for (int end = 10, growth = 20; at.m_iIndex >= end; ++block) {
      end += growth;
      growth = (std::min)(2 * growth, 100);
    }
    members.push_back({block, at.m_iIndex, member.As<IGLViewer>()});
  }
  std::sort(members.begin(), members.end(), [](const Member& aLeft, const Member& aRight) {
    return aLeft.block != aRight.block ? aLeft.block < aRight.block : aLeft.slot > aRight.slot;
  });
  std::vector<GLPtr<IGLViewer>> viewers;
  viewers.reserve(members.size());
  for (Member& m : members) viewers.push_back(std::move(m.viewer));
  return viewers;
}

/// Returns the topmost visible viewer whose rectangle contains a pixel. Any thread.
/// @return the viewer; null if there is none
inline GLPtr<IGLViewer> GLViewerAt(IGLContext& aContext, const GLPixelPlace& aPixel) {
  const auto viewers = GLViewersOf(aContext);
  const auto found = std::find_if(viewers.rbegin(), viewers.rend(), [&](const GLPtr<IGLViewer>& aViewer) {
    LONG visible = 0;
    aViewer->IsVisible(&visible);
    return visible != 0 && GLViewGeometry::Of(aContext, *aViewer.Get()).Contains(aPixel);
  });
  return found != viewers.rend() ? *found : nullptr;
}
