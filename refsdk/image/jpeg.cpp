// JPEG through libjpeg-turbo. Its errors arrive by longjmp, so the calls that can fail run in
// functions whose frames hold nothing to destroy.
#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

constexpr int defaultQuality = 90;
// From this quality on, chroma keeps full resolution.
constexpr int fullChromaQuality = 90;

struct ErrorJump {
    jpeg_error_mgr manager;
    std::jmp_buf jump;
};

void jumpOnError(j_common_ptr info) { std::longjmp(reinterpret_cast<ErrorJump*>(info->err)->jump, 1); }
void stayQuiet(j_common_ptr) {}

void useErrorJump(jpeg_common_struct& info, ErrorJump& error) {
    info.err = jpeg_std_error(&error.manager);
    error.manager.error_exit = jumpOnError;
    error.manager.output_message = stayQuiet;
}

bool compress(jpeg_compress_struct* info, ErrorJump* error, int width, int height, int quality, JSAMPARRAY rows,
              unsigned char** buffer, unsigned long* size) {
    if (setjmp(error->jump)) {
        jpeg_destroy_compress(info);
        return false;
    }
    jpeg_create_compress(info);
    jpeg_mem_dest(info, buffer, size);
    info->image_width = static_cast<JDIMENSION>(width);
    info->image_height = static_cast<JDIMENSION>(height);
    info->input_components = 3;
    info->in_color_space = JCS_RGB;
    jpeg_set_defaults(info);
    jpeg_set_quality(info, quality, TRUE);
    if (quality >= fullChromaQuality) info->comp_info[0].h_samp_factor = info->comp_info[0].v_samp_factor = 1;
    jpeg_start_compress(info, TRUE);
    while (info->next_scanline < info->image_height) jpeg_write_scanlines(info, rows + info->next_scanline, 1);
    jpeg_finish_compress(info);
    jpeg_destroy_compress(info);
    return true;
}

// Reads the header and starts decompressing to RGB.
bool startDecompress(jpeg_decompress_struct* info, ErrorJump* error, const uint8_t* data, size_t size) {
    if (setjmp(error->jump)) return false;
    jpeg_create_decompress(info);
    jpeg_mem_src(info, data, static_cast<unsigned long>(size));
    jpeg_read_header(info, TRUE);
    info->out_color_space = JCS_RGB;
    jpeg_start_decompress(info);
    return info->output_components == 3;
}

bool readRows(jpeg_decompress_struct* info, ErrorJump* error, JSAMPARRAY rows) {
    if (setjmp(error->jump)) return false;
    while (info->output_scanline < info->output_height) jpeg_read_scanlines(info, rows + info->output_scanline, 1);
    jpeg_finish_decompress(info);
    return true;
}

bool readHeader(jpeg_decompress_struct* info, ErrorJump* error, std::FILE* file) {
    if (setjmp(error->jump)) return false;
    jpeg_create_decompress(info);
    jpeg_stdio_src(info, file);
    jpeg_read_header(info, TRUE);
    return true;
}

class Decompressor {
public:
    Decompressor() { useErrorJump(*reinterpret_cast<jpeg_common_struct*>(&info), error); }
    ~Decompressor() { jpeg_destroy_decompress(&info); }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;
    jpeg_decompress_struct info{};
    ErrorJump error{};
};

}  // namespace

Bytes encodeJpeg(const ToviImage& image, int quality) {
    if (quality < 0 || quality > 100) throw ImageError("JPEG quality must be 1 to 100, or 0 for the default");
    if (quality == 0) quality = defaultQuality;
    size_t rowBytes = static_cast<size_t>(image.width) * 3;
    Bytes samples(rowBytes * static_cast<size_t>(image.height));
    std::vector<JSAMPROW> rows(static_cast<size_t>(image.height));
    ByteEncoder encode(image.outputGamma);
    for (int y = 0; y < image.height; ++y) {
        uint8_t* out = samples.data() + rowBytes * static_cast<size_t>(y);
        rows[static_cast<size_t>(y)] = out;
        for (int x = 0; x < image.width; ++x) {
            const Rgba& pixel = pixelAt(image, x, y);
            *out++ = encode(pixel.r);
            *out++ = encode(pixel.g);
            *out++ = encode(pixel.b);
        }
    }
    jpeg_compress_struct info{};
    ErrorJump error{};
    useErrorJump(*reinterpret_cast<jpeg_common_struct*>(&info), error);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    bool done = compress(&info, &error, image.width, image.height, quality, rows.data(), &buffer, &size);
    // The destination buffer belongs to us once compression has ended, well or not.
    Bytes encoded;
    try {
        if (done) encoded.assign(buffer, buffer + size);
    } catch (...) {
        std::free(buffer);
        throw;
    }
    std::free(buffer);
    if (!done) throw ImageError("JPEG encoding failed");
    return encoded;
}

ImagePtr decodeJpeg(const uint8_t* data, size_t size) {
    if (!data || size < 3 || data[0] != 0xFF || data[1] != 0xD8) throw ImageError("not JPEG data");
    Decompressor decompressor;
    if (!startDecompress(&decompressor.info, &decompressor.error, data, size) ||
        decompressor.info.output_width > INT32_MAX || decompressor.info.output_height > INT32_MAX) {
        throw ImageError("unreadable JPEG header");
    }
    int width = static_cast<int>(decompressor.info.output_width);
    int height = static_cast<int>(decompressor.info.output_height);
    ImagePtr image = createImage(width, height);
    size_t rowBytes = static_cast<size_t>(width) * 3;
    Bytes samples(rowBytes * static_cast<size_t>(height));
    std::vector<JSAMPROW> rows(static_cast<size_t>(height));
    for (size_t y = 0; y < rows.size(); ++y) rows[y] = samples.data() + rowBytes * y;
    if (!readRows(&decompressor.info, &decompressor.error, rows.data())) throw ImageError("corrupt JPEG data");
    Rgba* pixel = pixels(*image);
    for (size_t index = 0, count = pixelCount(*image); index < count; ++index) {
        const uint8_t* rgb = samples.data() + index * 3;
        pixel[index] = {rgb[0] / 255.0f, rgb[1] / 255.0f, rgb[2] / 255.0f, 1.0f};
    }
    return image;
}

Size jpegFileSize(const std::string& fileName) {
    OpenFile file(fileName);
    Decompressor decompressor;
    if (!readHeader(&decompressor.info, &decompressor.error, file.get()) ||
        decompressor.info.image_width > INT32_MAX || decompressor.info.image_height > INT32_MAX) {
        throw ImageError("unreadable JPEG header");
    }
    return {static_cast<int>(decompressor.info.image_width), static_cast<int>(decompressor.info.image_height)};
}

}  // namespace tovi::ref::image
