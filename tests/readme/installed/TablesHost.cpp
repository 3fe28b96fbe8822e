// A host with declarations of its own: identifiers as bytes, operations by their numbers, the module by its
// name. It draws what the README's program draws.

#include <dlfcn.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <thread>

namespace {

using Result = std::int32_t;
struct Id {
  std::uint32_t a;
  std::uint16_t b, c;
  std::uint8_t d[8];
};
struct Colour {
  float red, green, blue, alpha;
};
struct Pixel {
  std::uint8_t red, green, blue, alpha;
};

constexpr Id kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Id kFactory = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Id kContextClass = {0x1750378D, 0xFDFD, 0x11D3, {0xA3, 0x17}};
constexpr Id kContext = {0x1750378C, 0xFDFD, 0x11D3, {0xA3, 0x17}};
constexpr Id kPixmapClass = {0x5301619A, 0x211B, 0x4C86, {0xB7, 0xBB, 0xD2, 0x66, 0x14, 0x85, 0xE7, 0x11}};
constexpr Id kPixmap = {0x4EE20F33, 0x2F46, 0x43B4, {0x83, 0x44, 0x4C, 0x25, 0x22, 0xAD, 0x59, 0x01}};
constexpr Id kPainter = {0x510D9C87, 0xFF64, 0x11D3, {0xA3, 0x17}};
constexpr Id kCapture = {0xF8BF68B8, 0x3816, 0x4F53, {0xA9, 0xE7, 0x04, 0x9A, 0x6F, 0xEB, 0x42, 0x2E}};

/// Calls the operation in a slot of an object.
template <class... Arguments>
Result Call(void* object, int slot, Arguments... arguments) {
  void** table = *static_cast<void***>(object);
  return reinterpret_cast<Result (*)(void*, Arguments...)>(table[slot])(object, arguments...);
}

/// An object of this program's own. It stands until the end, so that its references needn't be counted.
struct Object {
  void* const* table;
  const Id* id;
};
Result Query(Object* self, const Id* id, void** found) {
  const bool known =
      std::memcmp(id, self->id, sizeof(Id)) == 0 || std::memcmp(id, &kUnknown, sizeof(Id)) == 0;
  *found = known ? self : nullptr;
  return known ? 0 : static_cast<Result>(0x80004002);
}
std::uint32_t Count(Object*) { return 1; }

template <class Function>
void* Slot(Function* function) {
  return reinterpret_cast<void*>(function);
}

void* picture = nullptr;
std::atomic<bool> wanted{true};
std::atomic<int> success{-1};

Result Draw(Object*, void* canvas, void*, void*) {
  Colour orange = {1.0f, 0.4f, 0.0f, 1.0f};
  Call(canvas, 39, &orange);  // SetVertexColor
  Call(canvas, 23);           // BeginDrawTriangles
  Call(canvas, 32, -40.0, -40.0, 0.0);
  Call(canvas, 32, 40.0, -40.0, 0.0);
  Call(canvas, 32, 0.0, 40.0, 0.0);
  return Call(canvas, 29);  // EndDrawVertices
}
Result IsEnabled(Object*, std::int32_t* enabled) { return *enabled = wanted.exchange(false), 0; }
Result GetPixmap(Object*, void** pixmap) {
  Call(*pixmap = picture, 1);
  return 0;
}
Result GetZoom(Object*, float* zoom) { return *zoom = 1.0f, 0; }
Result GetRectangle(Object*, int* x, int* y, int* width, int* height) {
  return *x = *y = 0, *width = 640, *height = 480, 0;
}
Result GetBackground(Object*, Colour* colour) { return *colour = {0, 0, 0, 1}, 0; }
Result OnData(Object*, std::int32_t taken) { return success = taken, 0; }

void* const kPainterTable[] = {Slot(Query), Slot(Count), Slot(Count), Slot(Draw)};
void* const kCaptureTable[] = {Slot(Query),        Slot(Count),         Slot(Count),
                               Slot(IsEnabled),    Slot(GetPixmap),     Slot(GetZoom),
                               Slot(GetRectangle), Slot(GetBackground), Slot(OnData)};

void* Make(void* module, const Id& classId, const Id& interfaceId) {
  const auto get =
      reinterpret_cast<Result (*)(const Id*, const Id*, void**)>(dlsym(module, "DllGetClassObject"));
  void *factory = nullptr, *object = nullptr;
  if (get(&classId, &kFactory, &factory) != 0) return nullptr;
  Call(factory, 3, static_cast<void*>(nullptr), &interfaceId, &object);
  Call(factory, 2);
  return object;
}

}  // namespace

int main() {
  void* module = dlopen("libgllib.so.1", RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return std::fprintf(stderr, "%s\n", dlerror()), 1;
  void* context = Make(module, kContextClass, kContext);
  picture = Make(module, kPixmapClass, kPixmap);
  if (context == nullptr || picture == nullptr || Call(context, 3, std::uintptr_t{0}) != 0) return 1;
  Call(context, 17, 0, 0, 640, 480);  // SetViewport
  Call(context, 25, 0);               // EnableLighting
  void* viewer = nullptr;
  Call(context, 20, 1, 1, &viewer);  // CreateViewer
  Object painter = {kPainterTable, &kPainter}, capture = {kCaptureTable, &kCapture};
  Call(context, 11, &painter);  // AttachPainter
  Call(context, 13, &capture);  // AttachCapture
  for (int i = 0; i < 10000 && success < 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  Pixel middle = {}, pixel = {};
  Call(picture, 9, 320, 240, &middle);             // GetPixel
  Call(picture, 10, 5, 7, Pixel{10, 20, 30, 40});  // SetPixel, by value
  Call(picture, 9, 5, 7, &pixel);
  std::printf("%d %d %d\n", middle.red, middle.green, middle.blue);
  Call(context, 2);
  Call(picture, 2);
  return success == 1 && pixel.red == 10 && pixel.green == 20 && pixel.blue == 30 && pixel.alpha == 40 ? 0
                                                                                                       : 1;
}
