// All published identifiers as text, for tests that mustn't take them from the headers under test.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

struct PublishedInterface {
  const char* m_szName;
  const char* m_szId;
};

struct PublishedClass {
  const char* m_szName;
  const char* m_szId;
  std::vector<PublishedInterface>
      m_vInterfaces;  // in the order of the class's map; the first is its identity
};

/// In the order of registration.
inline const std::vector<PublishedClass> kPublishedClasses = {
    {"GLContext",
     "1750378D-FDFD-11D3-A317-000000000000",
     {{"IGLContext", "1750378C-FDFD-11D3-A317-000000000000"},
      {"IGLContext2", "9A6C5A69-5F0E-4D23-B7DC-8BC1E6572EBB"},
      {"IGLContext12", "DE4AB195-E238-48A1-9F8D-DF004FC1EE2A"},
      {"IGLContext14_2", "0683A4F3-1BD0-4F66-8400-D2A8631CE49A"},
      {"IGLContext14_3", "C0BBA8A5-CCEB-4C15-A808-34C80F4AD393"}}},
    {"GLDrawAttr",
     "1750378F-FDFD-11D3-A317-000000000000",
     {{"IGLDrawAttr", "1750378E-FDFD-11D3-A317-000000000000"}}},
    {"GLFog", "17503791-FDFD-11D3-A317-000000000000", {{"IGLFog", "17503790-FDFD-11D3-A317-000000000000"}}},
    {"GLFont", "17503793-FDFD-11D3-A317-000000000000", {{"IGLFont", "17503792-FDFD-11D3-A317-000000000000"}}},
    {"GLLight",
     "17503795-FDFD-11D3-A317-000000000000",
     {{"IGLLight", "17503794-FDFD-11D3-A317-000000000000"}}},
    {"GLMaterial",
     "17503797-FDFD-11D3-A317-000000000000",
     {{"IGLMaterial", "17503796-FDFD-11D3-A317-000000000000"}}},
    {"GLViewer",
     "17503799-FDFD-11D3-A317-000000000000",
     {{"IGLViewer", "17503798-FDFD-11D3-A317-000000000000"},
      {"IGLViewer2", "AD73F8A0-C1B2-409F-AD01-58FD2926FF02"}}},
    {"GLCoord",
     "882DD087-033E-11D4-A319-000000000000",
     {{"IGLCoord", "882DD086-033E-11D4-A319-000000000000"}}},
    {"GLBitmap",
     "4A02DAC3-E971-4A86-B011-5EC7AE069EAB",
     {{"IGLBitmap", "8885BE1C-F7D8-4D87-9564-4201824F20D3"}}},
    {"GLPixmap",
     "5301619A-211B-4C86-B7BB-D2661485E711",
     {{"IGLPixmap", "4EE20F33-2F46-43B4-8344-4C2522AD5901"}}},
    {"GLTexture1D",
     "621CA4B3-B7A5-42BB-B491-F3CF476E0241",
     {{"IGLTexture1D", "58E698E2-F176-4C06-8A86-CCE08A3E1FA1"}}},
    {"GLTexture2D",
     "0144874F-34B6-4268-9A3C-DC1F66A9B95B",
     {{"IGLTexture2D", "61785FC9-5A44-4729-8320-3CF98614A03E"}}},
    {"GLCollection",
     "C1F0DF9D-ECE9-4EDF-82A3-700105F2D74F",
     {{"IGLCollection", "1BF499B7-CFCC-486F-BC74-8EBCC2916E94"}}},
    {"GLCanvas",
     "3CE8797C-F8AC-40A6-9301-AEC858682024",
     {{"IGLCanvas", "06BE8897-88A8-46C5-97D5-6029DC9F5D69"},
      {"IGLCanvas2", "6624D85F-8064-4078-A01A-2F6076D596E3"},
      {"IGLCanvas3", "E8AECE70-954B-4659-93C1-F31446EC2B05"},
      {"IGLCanvas13_1", "865105DF-CC17-4E81-9CC7-735117F02499"},
      {"IGLCanvas14_2", "7ED22534-F8F7-43CA-8BF1-277F34F27F1D"},
      {"IGLCanvas14_4", "03E21E5C-AD9E-4C71-8F39-A14D9001BB00"}}},
};

/// Those that hosts implement.
inline const std::vector<PublishedInterface> kPublishedCallbacks = {
    {"IGLPainter", "510D9C87-FF64-11D3-A317-000000000000"},
    {"IGLViewerGauge", "882DD083-033E-11D4-A319-000000000000"},
    {"IGLCapture", "F8BF68B8-3816-4F53-A9E7-049A6FEB422E"},
};

inline GUID IdentifierFromText(const char* aText) {
  unsigned a = 0, b = 0, c = 0, rest[8] = {};
  std::sscanf(aText, "%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x", &a, &b, &c, &rest[0], &rest[1], &rest[2],
              &rest[3], &rest[4], &rest[5], &rest[6], &rest[7]);
  GUID id = {a, static_cast<std::uint16_t>(b), static_cast<std::uint16_t>(c), {}};
  for (int i = 0; i < 8; ++i) id.Data4[i] = static_cast<std::uint8_t>(rest[i]);
  return id;
}
