// Operations of the object model: creation, identity, aggregation, the module's entry points. Any thread.

#include "host/Turn.h"

namespace {

constexpr const CLSID* kClasses[] = {
    &CLSID_GLContext,   &CLSID_GLCanvas,    &CLSID_GLViewer, &CLSID_GLDrawAttr,   &CLSID_GLMaterial,
    &CLSID_GLLight,     &CLSID_GLFog,       &CLSID_GLFont,   &CLSID_GLBitmap,     &CLSID_GLPixmap,
    &CLSID_GLTexture1D, &CLSID_GLTexture2D, &CLSID_GLCoord,  &CLSID_GLCollection, &IID_IGLFog};
constexpr const IID* kInterfaces[] = {
    &IID_IUnknown,    &IID_IClassFactory, &IID_IGLContext, &IID_IGLContext14_3, &IID_IGLCanvas14_4,
    &IID_IGLViewer2,  &IID_IGLDrawAttr,   &IID_IGLCoord,   &IID_IGLFont,        &IID_IGLCollection,
    &IID_IGLMaterial, &IID_IGLLight,      &IID_IGLPixmap,  &IID_IGLTexture1D,   &CLSID_GLFog};

template <class Interface, const CLSID& kClass>
void Make(Turn& aTurn) {
  aTurn.Keep(GLCreate<Interface>(kClass));
}

void Create(Turn& aTurn) {
  constexpr void (*kMakers[])(Turn&) = {Make<IGLContext, CLSID_GLContext>,
                                        Make<IGLViewer, CLSID_GLViewer>,
                                        Make<IGLLight, CLSID_GLLight>,
                                        Make<IGLFog, CLSID_GLFog>,
                                        Make<IGLFont, CLSID_GLFont>,
                                        Make<IGLCoord, CLSID_GLCoord>,
                                        Make<IGLDrawAttr, CLSID_GLDrawAttr>,
                                        Make<IGLMaterial, CLSID_GLMaterial>,
                                        Make<IGLCollection, CLSID_GLCollection>,
                                        Make<IGLBitmap, CLSID_GLBitmap>,
                                        Make<IGLPixmap, CLSID_GLPixmap>,
                                        Make<IGLTexture1D, CLSID_GLTexture1D>,
                                        Make<IGLTexture2D, CLSID_GLTexture2D>};
  aTurn.m_Bytes.OneOf(kMakers)(aTurn);
}

void CreateAnything(Turn& aTurn) {
  GLPtr<IUnknown> object;
  const HRESULT made =
      aTurn.Check(GLCreateObject(*aTurn.m_Bytes.OneOf(kClasses), *aTurn.m_Bytes.OneOf(kInterfaces),
                                 aTurn.m_Bytes.OneIn(16) ? nullptr : object.PutVoid()));
  if (SUCCEEDED(made) != static_cast<bool>(object)) std::abort();
}

void Query(Turn& aTurn) {
  const auto object = aTurn.Pick<IUnknown>();
  GLPtr<IUnknown> other, identity;
  if (!object ||
      FAILED(aTurn.Check(object->QueryInterface(*aTurn.m_Bytes.OneOf(kInterfaces), other.PutVoid()))))
    return;
  other->QueryInterface(IID_IUnknown, identity.PutVoid());
  if (identity.Get() != object.Get()) std::abort();
}

/// An outer object that aggregates an object of any class.
class Outer final : public GLClient<IUnknown> {
 public:
  GLPtr<IUnknown> m_pInner;
};

void Aggregate(Turn& aTurn) {
  GLPtr<IClassFactory> factory;
  if (FAILED(aTurn.Check(
          DllGetClassObject(*aTurn.m_Bytes.OneOf(kClasses), IID_IClassFactory, factory.PutVoid()))))
    return;
  const auto outer = GLMake<Outer>();
  if (FAILED(aTurn.Check(factory->CreateInstance(outer.Get(), *aTurn.m_Bytes.OneOf(kInterfaces),
                                                 outer->m_pInner.PutVoid()))))
    return;
  GLPtr<IUnknown> part;
  aTurn.Check(outer->m_pInner->QueryInterface(*aTurn.m_Bytes.OneOf(kInterfaces), part.PutVoid()));
}

void LockServer(Turn& aTurn) {
  GLPtr<IClassFactory> factory;
  if (FAILED(DllGetClassObject(*aTurn.m_Bytes.OneOf(kClasses), IID_IClassFactory, factory.PutVoid()))) return;
  factory->LockServer(1);
  if (DllCanUnloadNow() != S_FALSE) std::abort();
  factory->LockServer(0);
}

/// Takes an object from its place and releases it.
template <class Interface>
void Drop(Turn& aTurn) {
  aTurn.m_World.Of<Interface>().Put(aTurn.m_Bytes.Byte(), nullptr);
}

constexpr auto kOperations =
    Table<Operation::kAny, Create, Create, Create, Create, CreateAnything, Query, Aggregate, LockServer,
          Drop<IGLContext>, Drop<IGLViewer>, Drop<IGLLight>, Drop<IGLFont>, Drop<IGLCoord>,
          Drop<IGLCollection>, Drop<IGLPainter>, Drop<IGLViewerGauge>>();

}  // namespace

std::span<const Operation> ObjectOperations() noexcept { return kOperations; }
