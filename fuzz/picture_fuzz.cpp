// Any bytes as a picture file: refused, or loaded with as many pixels as it says.
#include <fstream>
#include <numeric>
#include <random>

#include "input.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const std::string path = "picture" + std::to_string(std::random_device()());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    CImage image;
    const bool loads = qev::LoadImageFile(image, path.c_str());
    std::remove(path.c_str());
    const auto bytes = std::size_t{4} * image.GetWidth() * image.GetHeight();
    fuzz::Expect(loads == !image.IsNull() && loads == (bytes > 0), "what loads has pixels");
    const std::size_t sum = std::accumulate(image.GetBits(), image.GetBits() + bytes, std::size_t{0});
    fuzz::Expect(sum <= 255 * bytes, "all of them are there");
    return 0;
}
