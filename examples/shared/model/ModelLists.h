// ModelLists: a model as a rendering context has it: display lists, materials, images. Large models come step
// by step, so that no frame takes long. Made by the host's thread, then the draw thread's alone.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <vector>

#include "shared/model/Model.h"

class ModelLists {
 public:
  /// @param aModel must outlive the lists
  explicit ModelLists(const Model& aModel);

  /// Compiles what is missing: everything, or as much as a frame has time for.
  /// @return the share that is there, from 0 to 1
  float Compile(IGLCanvas& aCanvas, bool aEverything);
  /// Deletes the lists, for a model that isn't shown any more.
  void Delete(IGLCanvas& aCanvas);

  /// Draws what is there of a part, in its own colours or in the one that is set.
  void Draw(IGLCanvas& aCanvas, const Part& aPart, bool aColored) const;
  IGLMaterial* Material(const Part& aPart) const { return m_parts[aPart.id - 1].material.Get(); }
  /// The image of a part that has one.
  IGLTexture2D* Texture(const Part& aPart) const { return m_parts[aPart.id - 1].texture.Get(); }

 private:
  /// What one list holds: some triangles of a part, without colours or with the part's own.
  struct Step {
    const Part* part;
    std::size_t first, last;
    bool colored;
  };
  struct Compiled {
    std::vector<int> plain, colored;  // keys
    GLPtr<IGLMaterial> material;
    GLPtr<IGLTexture2D> texture;  // null when the part has no image
  };

  void AddSteps(const Part& aPart, bool aColored);
  void Forget();

  std::vector<Step> m_steps;
  std::size_t m_done = 0;         // of the steps
  int m_first = 0;                // key of the first list
  std::vector<Compiled> m_parts;  // by identifier less 1
};
