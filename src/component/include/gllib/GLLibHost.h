// Comfort for hosts in C++: creation of objects, strings, and bases for the objects that a client implements.
// Header only. What runs on which thread is told at each base class.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLModule.h>
#include <gllib/GLPtr.h>

#include <atomic>
#include <string>
#include <string_view>

/// Makes an object of a class of the linked module.
/// @param ppv receives a counted reference, or null
/// @return S_OK; CLASS_E_CLASSNOTAVAILABLE; E_NOINTERFACE; E_OUTOFMEMORY; E_POINTER
inline HRESULT GLCreateObject(REFCLSID aClassId, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  GLPtr<IClassFactory> factory;
  const HRESULT result = DllGetClassObject(aClassId, IID_IClassFactory, factory.PutVoid());
  return FAILED(result) ? result : factory->CreateInstance(nullptr, riid, ppv);
}

/// As GLCreateObject, typed. @return null when the object can't be made
template <class Interface>
GLPtr<Interface> GLCreate(REFCLSID aClassId) noexcept {
  GLPtr<Interface> result;
  GLCreateObject(aClassId, GLIdentifierOf<Interface>(), result.PutVoid());
  return result;
}

/// Owns a BSTR; made from and turned into UTF-8. What isn't valid becomes U+FFFD.
class GLString {
 public:
  GLString() noexcept = default;
  explicit GLString(std::string_view aUtf8) {
    std::basic_string<GLWCHAR> units;
    for (std::size_t i = 0; i < aUtf8.size();) Append(units, Decode(aUtf8, i));
    m_Text = SysAllocStringLen(units.data(), static_cast<unsigned>(units.size()));
  }
  GLString(const GLString& aOther) noexcept
      : m_Text(aOther.m_Text == nullptr ? nullptr : SysAllocStringLen(aOther.m_Text, SysStringLen(aOther.m_Text))) {}
  GLString(GLString&& aOther) noexcept : m_Text(std::exchange(aOther.m_Text, nullptr)) {}
  ~GLString() { SysFreeString(m_Text); }
  GLString& operator=(GLString aOther) noexcept {
    std::swap(m_Text, aOther.m_Text);
    return *this;
  }

  BSTR Get() const noexcept { return m_Text; }
  /// Frees what is held and gives the place for an operation to write a string to.
  BSTR* Put() noexcept {
    SysFreeString(std::exchange(m_Text, nullptr));
    return &m_Text;
  }

  std::string ToUtf8() const {
    std::string result;
    const unsigned length = SysStringLen(m_Text);
    for (unsigned i = 0; i < length; ++i) {
      char32_t c = static_cast<char16_t>(m_Text[i]);
      const char32_t next = i + 1 < length ? static_cast<char16_t>(m_Text[i + 1]) : 0;
      if (c >= 0xD800 && c < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
        ++i;
      } else if (c >= 0xD800 && c < 0xE000) {
        c = kInvalid;
      }
      Encode(result, c);
    }
    return result;
  }

 private:
  static constexpr char32_t kInvalid = 0xFFFD;

  static char32_t Decode(std::string_view aUtf8, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(aUtf8[i++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
    if (more == 0 || lead >= 0xF5) return kInvalid;
    char32_t c = lead & (0x3Fu >> more);
    for (int k = 0; k < more; ++k, ++i) {
      if (i >= aUtf8.size() || (static_cast<unsigned char>(aUtf8[i]) & 0xC0) != 0x80) return kInvalid;
      c = (c << 6) | (static_cast<unsigned char>(aUtf8[i]) & 0x3F);
    }
    const bool tooLong = (more == 2 && c < 0x800) || (more == 3 && (c < 0x10000 || c > 0x10FFFF));
    return tooLong || (c >= 0xD800 && c < 0xE000) ? kInvalid : c;
  }
  static void Append(std::basic_string<GLWCHAR>& aUnits, char32_t c) {
    if (c >= 0x10000) {
      aUnits += static_cast<GLWCHAR>(0xD800 + ((c - 0x10000) >> 10));
      c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    aUnits += static_cast<GLWCHAR>(c);
  }
  static void Encode(std::string& aText, char32_t c) {
    if (c < 0x80) {
      aText += static_cast<char>(c);
      return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    aText += static_cast<char>((0xF00u >> more & 0xFF) | (c >> (6 * more)));
    for (int k = more - 1; k >= 0; --k) aText += static_cast<char>(0x80 | ((c >> (6 * k)) & 0x3F));
  }

  BSTR m_Text = nullptr;
};

/// IUnknown for an object that a client implements through one interface. Made with one reference by GLMake.
template <class Interface>
class GLClientObject : public Interface {
 public:
  GLClientObject() noexcept = default;
  GLClientObject(const GLClientObject&) = delete;
  GLClientObject& operator=(const GLClientObject&) = delete;
  virtual ~GLClientObject() = default;

  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != Interface::Identifier) return E_NOINTERFACE;
    *ppv = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  ULONG AddRef() noexcept override { return static_cast<ULONG>(++m_iReferences); }
  ULONG Release() noexcept override {
    const LONG left = --m_iReferences;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

 private:
  std::atomic<LONG> m_iReferences{0};
};

/// Makes a client object on the heap and gives the first reference to it.
template <class Object, class... Arguments>
GLPtr<Object> GLMake(Arguments&&... aArguments) {
  return GLPtr<Object>::FromBorrowed(new Object(std::forward<Arguments>(aArguments)...));
}

/// Base of painters: override Draw, which runs on the draw thread.
class GLPainterBase : public GLClientObject<IGLPainter> {};

/// Base of gauges: override Draw, which runs on the draw thread. Visible from the start.
class GLViewerGaugeBase : public GLClientObject<IGLViewerGauge> {
 public:
  HRESULT Show(LONG aShow) noexcept override {
    m_bVisible = aShow != 0;
    return S_OK;
  }
  HRESULT IsVisible(LONG* aVisible) noexcept override {
    if (aVisible == nullptr) return E_INVALIDARG;
    *aVisible = m_bVisible ? 1 : 0;
    return S_OK;
  }

 private:
  std::atomic<bool> m_bVisible{true};
};

/// Base of captures: override GetPixmap, GetRectangle and OnData, which run on the draw thread. Enable asks for one
/// picture, at zoom 1 on a black background unless overridden.
class GLCaptureBase : public GLClientObject<IGLCapture> {
 public:
  /// Asks for a picture of the next frame. Any thread.
  void Enable() noexcept { m_bWanted = true; }

  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = m_bWanted.exchange(false) ? 1 : 0;
    return S_OK;
  }
  HRESULT GetPixelZoom(float* aZoom) noexcept override {
    *aZoom = 1.0f;
    return S_OK;
  }
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override {
    *aColor = {0.0f, 0.0f, 0.0f, 1.0f};
    return S_OK;
  }

 private:
  std::atomic<bool> m_bWanted{false};
};
