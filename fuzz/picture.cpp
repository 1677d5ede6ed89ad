// Picture files through BMP_affic_dimfond0, BMP_affic_desfond0 and the
// picture command of TextOut_Ext. Input: x and y bytes, then the file.
// Besides the sanitizers, it checks against a model of the frame:
//   - the measured size is the IHDR's when the file starts with a PNG
//     signature and an IHDR of sides 1..16384, else 0 x 0, whatever the
//     oFFs offset says;
//   - drawing at (x, y), directly or by the picture command, changes no
//     pixel outside that size's box there.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vitrail/draw.h>
#include <vitrail/platform.h>

#include "platform/quickdraw/port.h"

namespace {

constexpr int kW = 96, kH = 64;
std::string file;

GrafPtr Setup() {
    static char dir[] = "/tmp/vitrail-fuzz-picture-XXXXXX";
    if (!mkdtemp(dir) || mkdir((std::string(dir) + "/PICT").c_str(), 0700) != 0) std::abort();
    file = std::string(dir) + "/PICT/repferb.png";
    vitrail_set_resources_folder(dir);
    GrafPtr port = vitrail_port_new(kW, kH);
    vitrail_port_set_current(port);
    ch_font_set(port, "Geneva", 0, 255, 9); // "X" narrower than 8: U = 8
    return port;
}

uint32_t Be32(const uint8_t *p) {
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
}

void ModelSize(const uint8_t *d, size_t n, int32_t &w, int32_t &h) {
    static const uint8_t signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    w = h = 0;
    if (n < 33 || std::memcmp(d, signature, 8) != 0 || std::memcmp(d + 12, "IHDR", 4) != 0) return;
    uint32_t a = Be32(d + 16), b = Be32(d + 20);
    if (a && b && a <= 16384 && b <= 16384) w = int32_t(a), h = int32_t(b);
}

// Clears the port after checking that nothing was drawn outside the box.
void CheckInsideAndClear(GrafPtr port, int x0, int y0, int w, int h) {
    for (int y = 0; y < kH; ++y)
        for (int x = 0; x < kW; ++x)
            if (vitrail_port_pixel(port, x, y) != 0xFFFFFFFF &&
                (x < x0 || x >= x0 + w || y < y0 || y >= y0 + h))
                std::abort();
    std::memset(port->pixels.data(), 0xFF, port->pixels.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static GrafPtr port = Setup();
    if (size < 2) return 0;
    std::FILE *f = std::fopen(file.c_str(), "wb");
    if (!f || std::fwrite(data + 2, 1, size - 2, f) != size - 2 || std::fclose(f) != 0)
        std::abort();
    int16_t x = int16_t(data[0] % 128 - 32), y = int16_t(data[1] % 96 - 32);
    int32_t w = -1, h = -1, mw = 0, mh = 0;
    ModelSize(data + 2, size - 2, mw, mh);
    if (BMP_affic_dimfond0("repferb", &w, &h) != 0 || w != mw || h != mh) std::abort();
    if (BMP_affic_desfond0("repferb", port, x, y) != 0) std::abort();
    CheckInsideAndClear(port, x, y, w, h);
    if (TextOut_Ext(port, x, y - 1, 0, 0, "\xFF\x94", 2) != 16) std::abort();
    CheckInsideAndClear(port, x, y, w, h);
    vitrail_port_trace_clear(port);
    return 0;
}
