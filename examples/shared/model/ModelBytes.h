// ModelBytes: a model as a block of bytes, for another process of the same program. The reader of the block
// trusts nothing in it. Any thread.

#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "shared/model/Model.h"

/// Takes the next bytes of a block. May throw to end the writing.
using ByteSink = std::function<void(const void*, std::size_t)>;

/// Writes a model, part by part, with each image once.
void WriteModel(const Model& aModel, const ByteSink& aSink);

/// Makes a model of a block. Counts are checked against the bytes that follow before memory is allocated, and
/// indices against the vertices.
/// @throws ModelError when the block isn't one that WriteModel wrote
Model ModelFromBytes(std::span<const std::byte> aBytes);
