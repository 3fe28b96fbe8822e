// ModelLists: the display lists, materials and textures of a model in a rendering context. Large models are
// compiled in steps, so that no frame takes long. The host's thread constructs the object; after that only
// the draw thread uses it.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <vector>

#include "shared/model/Model.h"

/// Colours of a part: the current colour, or those of its vertices if it has any.
enum class Coloring { Current, Own };

class ModelLists {
 public:
  /// @param aModel must outlive the lists
  explicit ModelLists(const Model& aModel);

  /// Compiles missing lists: all of them, or as many as fit into the time of a frame.
  /// @return the compiled share of the model, from 0 to 1
  float Compile(IGLCanvas& aCanvas, bool aEverything);
  /// Deletes the lists of a model that is no longer shown.
  void Delete(IGLCanvas& aCanvas);

  /// Draws the compiled lists of a part.
  void Draw(IGLCanvas& aCanvas, const Part& aPart, Coloring aColoring) const;
  IGLMaterial* Material(const Part& aPart) const { return m_parts[aPart.id - 1].material.Get(); }
  /// Returns the texture of a part that has an image.
  IGLTexture2D* Texture(const Part& aPart) const { return m_parts[aPart.id - 1].texture.Get(); }

 private:
  /// Contents of one list: some triangles of a part.
  struct Step {
    const Part* part;
    std::size_t first, last;
    Coloring coloring;
  };
  struct Compiled {
    std::vector<int> plain, colored;  // keys
    GLPtr<IGLMaterial> material;
    GLPtr<IGLTexture2D> texture;  // null if the part has no image
  };

  void AddSteps(const Part& aPart, Coloring aColoring);
  void Forget();

  std::vector<Step> m_steps;
  std::size_t m_done = 0;         // number of steps done
  int m_first = 0;                // key of the first list, to check whether the lists exist
  std::vector<Compiled> m_parts;  // index: identifier minus 1
};
