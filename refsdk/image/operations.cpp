#include "image/operations.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "stb_image_resize.h"

namespace tovi::ref::image {

namespace {

ImagePtr createLike(const ToviImage& source, int width, int height) {
    ImagePtr image = createImage(width, height);
    image->outputGamma = source.outputGamma;
    image->allocatorData = source.allocatorData;
    return image;
}

void checkRegion(const ToviImage& image, int x, int y, int width, int height) {
    if (x < 0 || y < 0 || width == 0 || height == 0 ||
        static_cast<int64_t>(x) + std::llabs(width) > image.width ||
        static_cast<int64_t>(y) + std::llabs(height) > image.height) {
        throw ImageError("the region does not lie inside the image");
    }
}

void checkTargetSize(int width, int height) {
    if (width < 1 || height < 1) throw ImageError("image width and height must be at least 1");
}

stbir_filter stbFilter(ResizeFilter filter) {
    switch (filter) {
        case ResizeFilter::Box: return STBIR_FILTER_BOX;
        case ResizeFilter::Triangle: return STBIR_FILTER_TRIANGLE;
        case ResizeFilter::CubicBSpline: return STBIR_FILTER_CUBICBSPLINE;
        case ResizeFilter::CatmullRom: return STBIR_FILTER_CATMULLROM;
        case ResizeFilter::Mitchell: return STBIR_FILTER_MITCHELL;
        case ResizeFilter::Automatic: break;
    }
    return STBIR_FILTER_DEFAULT;
}

float luminance(const Rgba& pixel) { return 0.2126f * pixel.r + 0.7152f * pixel.g + 0.0722f * pixel.b; }

template <typename Change>
void changeColour(ToviImage& image, Change change) {
    Rgba* pixel = pixels(image);
    for (size_t index = 0, count = pixelCount(image); index < count; ++index) {
        pixel[index].r = change(pixel[index].r);
        pixel[index].g = change(pixel[index].g);
        pixel[index].b = change(pixel[index].b);
    }
}

}  // namespace

ImagePtr crop(const ToviImage& image, int x, int y, int width, int height) {
    checkRegion(image, x, y, width, height);
    int cropWidth = std::abs(width);
    int cropHeight = std::abs(height);
    ImagePtr result = createLike(image, cropWidth, cropHeight);
    for (int row = 0; row < cropHeight; ++row) {
        int sourceRow = y + (height < 0 ? cropHeight - 1 - row : row);
        for (int column = 0; column < cropWidth; ++column) {
            int sourceColumn = x + (width < 0 ? cropWidth - 1 - column : column);
            pixelAt(*result, column, row) = pixelAt(image, sourceColumn, sourceRow);
        }
    }
    return result;
}

ImagePtr resize(const ToviImage& image, int width, int height, ResizeFilter filter) {
    checkTargetSize(width, height);
    ImagePtr result = createLike(image, width, height);
    if (!stbir_resize_float_generic(&pixels(image)->r, image.width, image.height, 0, &pixels(*result)->r, width,
                                    height, 0, 4, 3, 0, STBIR_EDGE_CLAMP, stbFilter(filter),
                                    STBIR_COLORSPACE_LINEAR, nullptr)) {
        throw ImageError("the resampler failed");
    }
    return result;
}

ImagePtr cropResize(const ToviImage& image, int x, int y, int cropWidth, int cropHeight, int width, int height) {
    if (cropWidth < 1 || cropHeight < 1) throw ImageError("the crop size must be at least 1");
    checkTargetSize(width, height);
    return resize(*crop(image, x, y, cropWidth, cropHeight), width, height);
}

Size fitInSize(int imageWidth, int imageHeight, int width, int height) {
    double scale = std::min(static_cast<double>(width) / imageWidth, static_cast<double>(height) / imageHeight);
    return {std::max(1, static_cast<int>(std::lround(imageWidth * scale))),
            std::max(1, static_cast<int>(std::lround(imageHeight * scale)))};
}

Size fitOutSize(int imageWidth, int imageHeight, int width, int height) {
    double scale = std::max(static_cast<double>(width) / imageWidth, static_cast<double>(height) / imageHeight);
    return {std::max(1, static_cast<int>(std::lround(imageWidth * scale))),
            std::max(1, static_cast<int>(std::lround(imageHeight * scale)))};
}

ImagePtr fitIn(const ToviImage& image, int width, int height) {
    checkTargetSize(width, height);
    Size size = fitInSize(image.width, image.height, width, height);
    return resize(image, size.width, size.height);
}

ImagePtr fitOut(const ToviImage& image, int width, int height) {
    checkTargetSize(width, height);
    Size size = fitOutSize(image.width, image.height, width, height);
    return resize(image, size.width, size.height);
}

ImagePtr cutIn(const ToviImage& image, int width, int height) {
    checkTargetSize(width, height);
    // The largest centred region with the target's aspect ratio.
    int regionWidth = image.width;
    int regionHeight = image.height;
    if (static_cast<int64_t>(image.width) * height > static_cast<int64_t>(image.height) * width) {
        regionWidth = std::clamp(static_cast<int>(std::lround(static_cast<double>(image.height) * width / height)), 1,
                                 image.width);
    } else {
        regionHeight = std::clamp(static_cast<int>(std::lround(static_cast<double>(image.width) * height / width)), 1,
                                  image.height);
    }
    return cropResize(image, (image.width - regionWidth) / 2, (image.height - regionHeight) / 2, regionWidth,
                      regionHeight, width, height);
}

void draw(ToviImage& dest, const ToviImage& src, int x, int y, bool blend) {
    if (&dest == &src) {  // drawing an image onto itself reads the pixels as they were
        ImagePtr copy = cloneImage(src);
        draw(dest, *copy, x, y, blend);
        return;
    }
    int64_t firstColumn = std::max<int64_t>(0, x);
    int64_t lastColumn = std::min<int64_t>(dest.width, static_cast<int64_t>(x) + src.width);
    int64_t firstRow = std::max<int64_t>(0, y);
    int64_t lastRow = std::min<int64_t>(dest.height, static_cast<int64_t>(y) + src.height);
    for (int64_t row = firstRow; row < lastRow; ++row) {
        for (int64_t column = firstColumn; column < lastColumn; ++column) {
            const Rgba& over = pixelAt(src, static_cast<int>(column - x), static_cast<int>(row - y));
            Rgba& under = pixelAt(dest, static_cast<int>(column), static_cast<int>(row));
            if (!blend) {
                under = over;
                continue;
            }
            float alpha = std::clamp(over.a, 0.0f, 1.0f);
            float underWeight = under.a * (1.0f - alpha);
            float resultAlpha = alpha + underWeight;
            auto mix = [&](float top, float bottom) {
                return resultAlpha > 0.0f ? (top * alpha + bottom * underWeight) / resultAlpha : 0.0f;
            };
            under = {mix(over.r, under.r), mix(over.g, under.g), mix(over.b, under.b), resultAlpha};
        }
    }
}

void addColor(ToviImage& image, const Rgba& color) {
    Rgba* pixel = pixels(image);
    for (size_t index = 0, count = pixelCount(image); index < count; ++index) {
        pixel[index] = {pixel[index].r + color.r, pixel[index].g + color.g, pixel[index].b + color.b,
                        pixel[index].a + color.a};
    }
}

void multiplyColor(ToviImage& image, const Rgba& color) {
    Rgba* pixel = pixels(image);
    for (size_t index = 0, count = pixelCount(image); index < count; ++index) {
        pixel[index] = {pixel[index].r * color.r, pixel[index].g * color.g, pixel[index].b * color.b,
                        pixel[index].a * color.a};
    }
}

void changeExposure(ToviImage& image, float stops) {
    if (!std::isfinite(stops)) throw ImageError("the exposure change must be finite");
    float factor = std::exp2(stops);
    changeColour(image, [factor](float value) { return value * factor; });
}

void changeGamma(ToviImage& image, float gamma) {
    if (!std::isfinite(gamma) || gamma <= 0.0f) throw ImageError("gamma must be finite and positive");
    float exponent = 1.0f / gamma;
    changeColour(image, [exponent](float value) { return std::copysign(std::pow(std::fabs(value), exponent), value); });
}

void changeSrgb(ToviImage& image, bool toSrgb) {
    if (toSrgb) {
        changeColour(image, [](float value) {
            return value <= 0.0031308f ? value * 12.92f : 1.055f * std::pow(value, 1.0f / 2.4f) - 0.055f;
        });
    } else {
        changeColour(image, [](float value) {
            return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
        });
    }
}

void changeContrast(ToviImage& image, float contrast) {
    if (!std::isfinite(contrast)) throw ImageError("the contrast must be finite");
    changeColour(image, [contrast](float value) { return (value - 0.5f) * contrast + 0.5f; });
}

void makeNegative(ToviImage& image) {
    changeColour(image, [](float value) { return 1.0f - value; });
}

bool whiteBalanceMultiplier(const ToviImage& image, WhiteBalanceMode mode, Rgba& multiplier) {
    multiplier = {1.0f, 1.0f, 1.0f, 1.0f};
    if (mode != WhiteBalanceMode::Average && mode != WhiteBalanceMode::WeightedAverage &&
        mode != WhiteBalanceMode::Highlights) {
        return true;
    }
    const Rgba* pixel = pixels(image);
    size_t count = pixelCount(image);
    std::vector<size_t> chosen;
    if (mode == WhiteBalanceMode::Highlights) {
        // Exactly the brightest twentieth; among equally bright pixels any may be taken.
        chosen.resize(count);
        for (size_t index = 0; index < count; ++index) chosen[index] = index;
        size_t highlightCount = std::max<size_t>(1, count / 20);
        std::nth_element(chosen.begin(), chosen.begin() + static_cast<ptrdiff_t>(highlightCount - 1), chosen.end(),
                         [pixel](size_t first, size_t second) { return luminance(pixel[first]) > luminance(pixel[second]); });
        chosen.resize(highlightCount);
    }
    double red = 0.0, green = 0.0, blue = 0.0;
    auto accumulate = [&](const Rgba& each, double weight) {
        red += weight * each.r;
        green += weight * each.g;
        blue += weight * each.b;
    };
    if (mode == WhiteBalanceMode::Highlights) {
        for (size_t index : chosen) accumulate(pixel[index], 1.0);
    } else {
        for (size_t index = 0; index < count; ++index) {
            accumulate(pixel[index], mode == WhiteBalanceMode::WeightedAverage ? std::max(0.0f, luminance(pixel[index])) : 1.0);
        }
    }
    if (!(red > 0.0 && green > 0.0 && blue > 0.0) || !std::isfinite(red + green + blue)) return false;
    double level = (red + green + blue) / 3.0;
    multiplier = {static_cast<float>(level / red), static_cast<float>(level / green), static_cast<float>(level / blue),
                  1.0f};
    return true;
}

float difference(const ToviImage& image, const ToviImage& other) {
    if (image.width != other.width || image.height != other.height) throw ImageError("the image sizes differ");
    const Rgba* first = pixels(image);
    const Rgba* second = pixels(other);
    double sum = 0.0;
    size_t count = pixelCount(image);
    for (size_t index = 0; index < count; ++index) {
        sum += std::fabs(static_cast<double>(first[index].r) - second[index].r) +
               std::fabs(static_cast<double>(first[index].g) - second[index].g) +
               std::fabs(static_cast<double>(first[index].b) - second[index].b) +
               std::fabs(static_cast<double>(first[index].a) - second[index].a);
    }
    return static_cast<float>(sum / (4.0 * static_cast<double>(count)));
}

}  // namespace tovi::ref::image
