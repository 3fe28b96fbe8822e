// ModelBytes: a model as a block of bytes, for another process of the same program. Reading validates the
// whole block. Any thread.

#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "shared/model/Model.h"

/// Receives the next bytes of a block. May throw to stop the writing.
using ByteSink = std::function<void(const void*, std::size_t)>;

/// Writes a model, part by part. Each image is written once.
void WriteModel(const Model& aModel, const ByteSink& aSink);

/// Reads a model from a block. Counts are checked against the remaining bytes before memory is allocated, and
/// indices against the number of vertices.
/// @throws ModelError if the block is not valid
Model ModelFromBytes(std::span<const std::byte> aBytes);
