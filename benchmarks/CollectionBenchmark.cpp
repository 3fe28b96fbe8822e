// The collection beside a plain vector of counted pointers: a walk, and adding one by one.

#include <benchmark/benchmark.h>
#include <gllib/GLClasses.h>
#include <gllib/IGLCollection.h>

#include <vector>

#include "component/CreateObject.h"

namespace {

/// Members that live through the whole run.
std::vector<GLPtr<IUnknown>> Members(std::int64_t aCount) {
  std::vector<GLPtr<IUnknown>> members;
  for (std::int64_t i = 0; i < aCount; ++i) members.push_back(CreateObject<IUnknown>(CLSID_GLDrawAttr));
  return members;
}

void WalkCollection(benchmark::State& aState) {
  const auto members = Members(aState.range(0));
  const auto coll = CreateObject<IGLCollection>(CLSID_GLCollection);
  for (const auto& member : members) coll->Add(member.Get());
  for (auto _ : aState) {
    GLPOSITION position;
    GLPtr<IUnknown> member;
    for (HRESULT r = coll->GetFirst(&position, member.Put()); r == S_OK;
         r = coll->GetNext(&position, member.Put())) {
      benchmark::DoNotOptimize(member.Get());
    }
  }
  aState.SetItemsProcessed(aState.iterations() * aState.range(0));
}

void WalkVector(benchmark::State& aState) {
  const auto members = Members(aState.range(0));
  for (auto _ : aState) {
    for (const auto& each : members) {
      const GLPtr<IUnknown> member = each;  // a reference of its own, as the collection gives
      benchmark::DoNotOptimize(member.Get());
    }
  }
  aState.SetItemsProcessed(aState.iterations() * aState.range(0));
}

void AddToCollection(benchmark::State& aState) {
  const auto members = Members(aState.range(0));
  const auto coll = CreateObject<IGLCollection>(CLSID_GLCollection);
  for (auto _ : aState) {
    for (const auto& member : members) coll->Add(member.Get());
    coll->Empty();
  }
  aState.SetItemsProcessed(aState.iterations() * aState.range(0));
}

void AddToVector(benchmark::State& aState) {
  const auto members = Members(aState.range(0));
  for (auto _ : aState) {
    std::vector<GLPtr<IUnknown>> vector;
    for (const auto& member : members) vector.push_back(member);
    benchmark::DoNotOptimize(vector.data());
  }
  aState.SetItemsProcessed(aState.iterations() * aState.range(0));
}

}  // namespace

BENCHMARK(WalkCollection)->Arg(10)->Arg(1000);
BENCHMARK(WalkVector)->Arg(10)->Arg(1000);
BENCHMARK(AddToCollection)->Arg(10)->Arg(1000);
BENCHMARK(AddToVector)->Arg(10)->Arg(1000);
