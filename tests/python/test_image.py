"""ToviImage: construction, attributes, pixel access, saving and compressing (files read back by
independent readers), operations, the interpreter lock around codecs, and leaks."""

import array
import struct
import sys
import threading
import tracemalloc
import zlib

import pytest
import tovi

NO_IMAGE = "This instance contains no image."
RAW_FORMAT = ("Unknown type. Supported types are 'bgra' ('bgra_byte') (default), 'bgr' ('bgr_byte'), 'rgba16' "
              "('rgba_16bit'), 'rgba32' ('rgba_float'), 'rgba_half_float' ('rgba_float16')")


def pattern(width=7, height=5):
    """An image whose pixels differ per channel, with values outside [0, 1] for the clamping."""
    values = array.array("f")
    for y in range(height):
        for x in range(width):
            values.extend([x / (width - 1) * 1.2 - 0.1, y / (height - 1), ((x * 3 + y * 5) % 7) / 6, (x + y) / 10])
    return tovi.ToviImage.createFromRawData(values, "rgba32", width, height)


def pixels(image):
    return [tuple(image[i]) for i in range(len(image))]


def clamp(value):
    return min(max(value, 0.0), 1.0)


def read_png(data):
    """Header and samples of a PNG, decoded with zlib and struct alone."""
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    position, compressed, kinds = 8, b"", []
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        body = data[position + 8:position + 8 + length]
        position += 12 + length
        kinds.append(kind)
        if kind == b"IHDR":
            width, height, depth, color = struct.unpack(">IIBB", body[:10])
        elif kind == b"IDAT":
            compressed += body
    channels = {2: 3, 6: 4}[color]
    step = channels * depth // 8
    stride = width * step
    raw = zlib.decompress(compressed)
    previous, samples = bytearray(stride), []
    for row in range(height):
        method, line = raw[row * (stride + 1)], bytearray(raw[row * (stride + 1) + 1:(row + 1) * (stride + 1)])
        for i in range(stride):
            a = line[i - step] if i >= step else 0
            b, c = previous[i], previous[i - step] if i >= step else 0
            p = a + b - c
            predictor = [0, a, b, (a + b) // 2,
                         a if abs(p - a) <= abs(p - b) and abs(p - a) <= abs(p - c) else b if abs(p - b) <= abs(p - c) else c]
            line[i] = (line[i] + predictor[method]) & 255
        samples.extend(struct.unpack(f">{width * channels}{'H' if depth == 16 else 'B'}", line))
        previous = line
    return {"size": (width, height), "depth": depth, "channels": channels, "kinds": kinds,
            "pixels": [tuple(samples[i:i + channels]) for i in range(0, len(samples), channels)]}


def read_bmp(data):
    """Size, bits per pixel and pixels (file byte order) of an uncompressed BMP."""
    assert data[:2] == b"BM"
    offset, = struct.unpack("<I", data[10:14])
    width, height, _, bits = struct.unpack("<iiHH", data[18:30])
    step = bits // 8
    stride = (width * step + 3) // 4 * 4
    rows = [data[offset + row * stride:offset + row * stride + width * step] for row in range(abs(height))]
    if height > 0:
        rows.reverse()
    return {"size": (width, abs(height)), "bits": bits,
            "pixels": [tuple(row[i:i + step]) for row in rows for i in range(0, width * step, step)]}


def assert_bytes_match(codes, image, scale, swap=False, alpha=True):
    for code, pixel in zip(codes, pixels(image)):
        expected = (pixel[2], pixel[1], pixel[0]) if swap else pixel[:3]
        if alpha:
            expected += (pixel[3],)
        for got, value in zip(code, expected):
            assert abs(got - scale * clamp(value)) <= 0.5 + 1e-4, (code, pixel)


def test_constructor_forms_and_their_messages(sdk):
    image = tovi.ToviImage(3, 2)
    assert (image.width, image.height, len(image), image.x, image.y, image.host) == (3, 2, 6, 0, 0, None)
    assert image[5] == tovi.AColor(0, 0, 0, 0)
    assert sdk.last_call("ToviImage_create") == {"width": 3, "height": 2}

    source = pattern()
    copy = tovi.ToviImage(source)
    copy[0] = tovi.AColor(9, 9, 9, 9)
    assert pixels(copy)[1:] == pixels(source)[1:] and source[0] != copy[0]

    encoded = bytes(source.compress(type="png", preserveAlpha=True))
    with tovi.Renderer() as renderer:
        decoded = tovi.ToviImage(encoded, "PNG", renderer)
    assert sdk.last_call("ToviImage_createFromPng") == {"size": len(encoded), "renderer": True, "flags": 0}
    assert (decoded.width, decoded.height) == (7, 5)
    jpeg = tovi.ToviImage(buffer=bytes(source.compress(95, type="jpg")), type="Jpeg")
    assert (jpeg.width, jpeg.height) == (7, 5)

    for arguments, message in [((5,), "When passing a single argument, it should be of type ToviImage."),
                               ((encoded, "gif"), "Invalid image type string."),
                               ((b"not an image", "png"), "Image decompression error."),
                               ((0, 4), "Image width and height must be greater than 0."),
                               ((), "Image width and height must be greater than 0."),
                               ((1.5, 2), "Image width and height must be greater than 0.")]:
        with pytest.raises(TypeError) as raised:
            tovi.ToviImage(*arguments)
        assert str(raised.value) == message, arguments
    with pytest.raises(TypeError, match="^Cannot copy ToviImage.$"):
        tovi.ToviImage(tovi.ToviImage.createFromRawData(b"", 7, 1, 1))
    with pytest.raises(TypeError, match="^Cannot create ToviImage.$"):
        tovi.ToviImage(1 << 20, 1 << 20)

    # Initialising again replaces the image and frees the old one.
    blocks = sdk.live("blocks")
    image.__init__(4, 4)
    assert (image.width, len(image), sdk.live("blocks")) == (4, 16, blocks)


def test_class_methods(sdk, tmp_path):
    source = pattern()
    for kind, encoded in [("BMP", source.compress(type="bmp")), ("png", source.compress(type="png")),
                          ("jpg", source.compress(type="jpeg")), ("JPEG", source.compress(type="jpeg"))]:
        image = tovi.ToviImage.createFromBuffer(bytearray(encoded), kind)
        assert type(image) is tovi.ToviImage and (image.width, image.height, image.x) == (7, 5, 0)
    with pytest.raises(TypeError, match="^Invalid buffer$"):
        tovi.ToviImage.createFromBuffer("text", "png")
    with pytest.raises(TypeError, match=r"^Type must be: 'bmp', 'png', 'jpg' or 'jpeg'.$"):
        tovi.ToviImage.createFromBuffer(b"", "tiff")
    with pytest.raises(RuntimeError, match="^Error creating image. A possible cause is wrong data.$"):
        tovi.ToviImage.createFromBuffer(b"BM junk", "bmp")

    bgra = bytes([10, 20, 30, 40, 50, 60, 70, 80])
    for kind in (0, "BGRA", "bgra_byte"):
        image = tovi.ToviImage.createFromRawData(bgra, kind, 2, 1)
        assert sdk.last_call("ToviImage_createFromRawData") == {"size": 8, "format": 0, "width": 2, "height": 1,
                                                                "stride": 0}
        assert list(image.toIntList()) == list(struct.unpack("<2i", bgra))
    for name, code in [("bgr", 4), ("bgr_byte", 4), ("rgba16", 3), ("RGBA_16bit", 3), ("rgba32", 1),
                       ("rgba_float", 1), ("rgba_half_float", 5), ("rgba_float16", 5), (7, 7)]:
        tovi.ToviImage.createFromRawData(bytes(32), name, 2, 1)
        assert sdk.last_call("ToviImage_createFromRawData")["format"] == code
    empty = tovi.ToviImage.createFromRawData(bytes(32), 7, 2, 1)
    assert (empty.width, empty.height, len(empty)) == (0, 0, 0)
    for kind in (-1, "rgb", 1.0, None, 1 << 70):
        with pytest.raises(TypeError) as raised:
            tovi.ToviImage.createFromRawData(bgra, kind, 2, 1)
        assert str(raised.value) == RAW_FORMAT
    with pytest.raises(TypeError, match="^Invalid buffer$"):
        tovi.ToviImage.createFromRawData(12, 0, 2, 1)

    path = tmp_path / "loaded.png"
    assert source.save(str(path))
    assert pixels(tovi.ToviImage.load(str(path))) == pixels(tovi.ToviImage.createFromBuffer(path.read_bytes(), "png"))
    assert tovi.ToviImage.loadSize(str(path)) == (7, 5)
    with pytest.raises(RuntimeError, match="^Error loading image.$"):
        tovi.ToviImage.load(str(tmp_path / "missing.png"))
    with pytest.raises(RuntimeError, match="^Error loading image size.$"):
        tovi.ToviImage.loadSize(str(tmp_path / "missing.png"))


def test_attributes():
    image = tovi.ToviImage(2, 2)
    image.x, image.y = -5, 7
    assert (image.x, image.y) == (-5, 7)
    for name in ("x", "y"):
        with pytest.raises(TypeError, match=f"^{name} can only be set to an integer value.$"):
            setattr(image, name, 1.0)
        with pytest.raises(TypeError, match=f"^Cannot delete the '{name}' attribute.$"):
            delattr(image, name)
    for name in ("width", "height", "host"):
        with pytest.raises(AttributeError):
            setattr(image, name, 1)

    assert image.gamma == 1.0
    image.gamma = 2
    assert image.gamma == 2.0
    with pytest.raises(ValueError, match="^Wrong gamma value passed.$"):
        image.gamma = -1.0
    with pytest.raises(TypeError, match="^gamma can only be set to a number.$"):
        image.gamma = "2.2"
    with pytest.raises(TypeError, match="^Cannot delete the 'gamma' attribute.$"):
        del image.gamma

    empty = tovi.ToviImage.createFromRawData(b"", 7, 1, 1)
    with pytest.raises(RuntimeError, match=f"^{NO_IMAGE}$"):
        empty.gamma
    with pytest.raises(BufferError, match=f"^{NO_IMAGE}$"):
        empty.gamma = 2.0


def test_pixels_as_sequence_and_buffer():
    image = pattern()
    values = pixels(image)
    assert len(image) == 35 and image[-1] == image[34] and tuple(image[-35]) == values[0]
    assert values[8] == pytest.approx((1 / 6 * 1.2 - 0.1, 0.25, (3 + 5) % 7 / 6, 0.2), abs=1e-6)
    for index in (35, -36):
        with pytest.raises(IndexError, match=r"^Index out of range.$"):
            image[index]
    image[3] = tovi.AColor(0.5, 0.25, 2.0, 1.0)
    assert image[3] == tovi.AColor(0.5, 0.25, 2.0, 1.0)
    with pytest.raises(TypeError):
        image[3] = tovi.Color(1, 1, 1)

    view = memoryview(image)
    assert (view.format, view.itemsize, view.shape, view.nbytes, view.readonly) == ("f", 4, (35, 4), 560, False)
    view[3, 0] = 0.125
    assert image[3].r == 0.125
    with pytest.raises(BufferError):
        image.__init__(1, 1)
    view.release()
    image.__init__(1, 1)
    assert len(image) == 1

    empty = tovi.ToviImage.createFromRawData(b"", 7, 1, 1)
    with pytest.raises(RuntimeError, match=f"^{NO_IMAGE}$"):
        empty[0]
    with pytest.raises(BufferError, match=f"^{NO_IMAGE}$"):
        empty[0] = tovi.AColor()
    with pytest.raises(BufferError, match=f"^{NO_IMAGE}$"):
        memoryview(empty)


def test_numpy_sees_the_pixels_without_a_copy():
    numpy = pytest.importorskip("numpy")
    image = pattern()
    data = numpy.asarray(memoryview(image))
    assert data.dtype == numpy.float32 and data.shape == (35, 4)
    data[10] = (1, 2, 3, 4)
    assert image[10] == tovi.AColor(1, 2, 3, 4)
    image[11] = tovi.AColor(5, 6, 7, 8)
    assert list(data[11]) == [5, 6, 7, 8]


def test_save_chooses_the_type_and_passes_the_arguments(sdk, tmp_path):
    image = pattern()
    name = str(tmp_path / "out")
    with pytest.raises(TypeError, match=r"^Image file type cannot be determined from file name\. You can pass it as "
                                        r"a type argument: 'bmp', 'png', 'jpeg', 'tiff' or 'exr'\.$"):
        image.save(name)
    with pytest.raises(TypeError, match="^You must provide a fileName.$"):
        image.save(b"out.png")
    with pytest.raises(TypeError, match=r"^type must be: 'bmp', 'png', 'jpeg', 'tiff' or 'exr'\.$"):
        image.save(name + ".gif")

    cases = [
        # the type in the third position: preserveAlpha counts as not given, quality decides alpha
        ((name, 90, "png"), "ToviImage_compressToPngFile", {"flags": 1}),
        ((name, 0, "png"), "ToviImage_compressToPngFile", {"flags": 0}),
        ((name + ".PNG",), "ToviImage_compressToPngFile", {"flags": 0}),
        ((name + ".png", None, True), "ToviImage_compressToPngFile", {"flags": 1}),
        ((name + ".png",), "ToviImage_compressToPngFile", {"flags": 3}, {"preserveAlpha": 1, "bitsPerChannel": 16}),
        ((name + ".png",), "ToviImage_compressToPngFile", {"flags": 0}, {"bitsPerChannel": 16.0}),
        # the type in the fourth position: swapChannels counts as not given
        ((name, 1, True, "BMP"), "ToviImage_SaveToBmpFile", {"preserveAlpha": 1, "swapChannels": 0}),
        ((name + ".bmp", 0, False, True), "ToviImage_SaveToBmpFile", {"preserveAlpha": 0, "swapChannels": 1}),
        ((name + ".bmp", 1), "ToviImage_SaveToBmpFile", {"preserveAlpha": 1, "swapChannels": 0}),
        ((name + ".jpg", 75), "ToviImage_compressToJpegFile", {"quality": 75}),
        ((name + ".jpeg", "high", None, None, "jpeg"), "ToviImage_compressToJpegFile", {"quality": 0}),
        ((name + ".tif",), "ToviImage_SaveToTiffFile", {"bitsPerChannel": 16}, {"bitsPerChannel": 16}),
        ((name + ".tiff",), "ToviImage_SaveToTiffFile", {"bitsPerChannel": 0}),
        ((name + ".x",), "ToviImage_SaveToExrFile", {}, {"type": "EXR"}),
    ]
    for arguments, entry, expected, *keywords in cases:
        assert image.save(*arguments, **(keywords[0] if keywords else {})) is True, arguments
        recorded = sdk.last_call(entry)
        assert recorded["fileName"] == arguments[0] and recorded["renderer"] is False, arguments
        assert {key: recorded[key] for key in expected} == expected, arguments
        sdk.clearCalls()
    with tovi.Renderer() as renderer:
        assert image.save(name + ".exr", renderer=renderer)
        assert sdk.last_call("ToviImage_SaveToExrFile")["renderer"] is True
    assert image.save(name + ".tif", bitsPerChannel=12) is False
    assert image.save(str(tmp_path / "missing" / "a.png")) is False


def test_compress_chooses_the_type_and_returns_bytes(sdk):
    image = pattern()
    with pytest.raises(TypeError, match=r"^type must be: 'bmp', 'png' or 'jpeg'\.$"):
        image.compress()
    with pytest.raises(TypeError, match=r"^type must be: 'bmp', 'png' or 'jpeg'\.$"):
        image.compress(type="tiff")
    cases = [
        # a type in the first position is taken by preserveAlpha too
        (("png",), {}, "ToviImage_compressToPng", {"flags": 1}),
        ((0, None, "png"), {}, "ToviImage_compressToPng", {"flags": 0}),
        ((5, "png"), {"bitsPerChannel": 16}, "ToviImage_compressToPng", {"flags": 3}),
        ((90, False, "jpeg"), {}, "ToviImage_compressToJpeg", {"quality": 90}),
        (("JPG",), {}, "ToviImage_compressToJpeg", {"quality": 0}),
        ((), {"type": "bmp", "preserveAlpha": 1, "swapChannels": 1}, "ToviImage_convertToBmp",
         {"preserveAlpha": 1, "swapChannels": 1}),
        ((1,), {"swapChannels": "bmp"}, "ToviImage_convertToBmp", {"preserveAlpha": 1, "swapChannels": 0}),
        ((1, None, "bmp"), {}, "ToviImage_convertToBmp", {"preserveAlpha": 0, "swapChannels": 0}),
    ]
    for arguments, keywords, entry, expected in cases:
        encoded = image.compress(*arguments, **keywords)
        assert type(encoded) is memoryview and encoded.readonly and encoded.format == "B"
        assert type(encoded.obj).__name__ == "CompressedImage" and not hasattr(tovi, "CompressedImage")
        recorded = sdk.last_call(entry)
        assert {key: recorded[key] for key in expected} == expected, arguments
        sdk.clearCalls()
    assert bytes(image.compress(type="png")[:4]) == b"\x89PNG"
    with pytest.raises(RuntimeError, match=r"^Error compressing the image\.$"):
        image.compress(101, type="jpeg")


def test_files_read_back_by_independent_readers(tmp_path):
    image = pattern()
    for alpha, sixteen in [(False, False), (True, False), (True, True), (False, True)]:
        path = tmp_path / f"file{alpha}{sixteen}.png"
        assert image.save(str(path), preserveAlpha=alpha, bitsPerChannel=16 if sixteen else 8)
        png = read_png(path.read_bytes())
        assert (png["size"], png["depth"], png["channels"]) == ((7, 5), 16 if sixteen else 8, 4 if alpha else 3)
        assert_bytes_match(png["pixels"], image, 65535 if sixteen else 255, alpha=alpha)
    # A 16-bit file keeps 16 bits when the SDK loads it again.
    loaded = tovi.ToviImage.load(str(tmp_path / "fileTrueTrue.png"))
    for got, pixel in zip(pixels(loaded), pixels(image)):
        assert got == pytest.approx(tuple(clamp(v) for v in pixel), abs=0.5 / 65535 + 1e-7)

    for alpha, swap in [(False, False), (True, True)]:
        path = tmp_path / f"file{alpha}{swap}.bmp"
        assert image.save(str(path), alpha, swapChannels=swap)
        bmp = read_bmp(path.read_bytes())
        assert (bmp["size"], bmp["bits"]) == ((7, 5), 32 if alpha else 24)
        # BMP stores blue first: the swapped file holds red there
        assert_bytes_match([code[2::-1] + code[3:] for code in bmp["pixels"]], image, 255, swap=swap, alpha=alpha)
    assert bytes(image.compress(type="bmp")) == (tmp_path / "fileFalseFalse.bmp").read_bytes()

    for bits, tolerance in [(8, 0.5 / 255), (16, 0.5 / 65535), (32, 0.0)]:
        path = str(tmp_path / f"file{bits}.tif")
        assert image.save(path, bitsPerChannel=bits)
        for got, pixel in zip(pixels(tovi.ToviImage.load(path)), pixels(image)):
            expected = pixel if bits == 32 else tuple(clamp(v) for v in pixel)
            assert got == pytest.approx(expected, abs=tolerance + 1e-7)
    assert image.save(str(tmp_path / "file.exr"))
    for got, pixel in zip(pixels(tovi.ToviImage.load(str(tmp_path / "file.exr"))), pixels(image)):
        assert got == pytest.approx(pixel, rel=2 ** -11, abs=2 ** -24)


def test_jpeg_follows_the_image_and_grows_with_quality(tmp_path):
    numpy = pytest.importorskip("numpy")
    image = tovi.ToviImage(64, 64)
    data = numpy.asarray(memoryview(image)).reshape(64, 64, 4)
    y, x = numpy.mgrid[0:64, 0:64]
    data[..., 0], data[..., 1], data[..., 2], data[..., 3] = x / 63, y / 63, (numpy.sin(x * 0.7) + 1) / 2, 1
    sizes = [len(image.compress(quality, type="jpeg")) for quality in (10, 50, 80, 100)]
    assert sizes == sorted(sizes) and len(set(sizes)) == 4
    path = str(tmp_path / "q95.jpg")
    assert image.save(path, 95)
    loaded = numpy.asarray(memoryview(tovi.ToviImage.load(path)))
    assert numpy.abs(loaded[:, :3] - data.reshape(-1, 4)[:, :3]).mean() < 0.01


def test_geometry_operations(sdk):
    image = pattern()
    image.x, image.y = 3, 4
    cropped = image.getCropped(1, 2, 3, 2)
    assert (cropped.width, cropped.height, cropped.x, cropped.y) == (3, 2, 0, 0)
    assert cropped[0] == image[2 * 7 + 1] and cropped[5] == image[3 * 7 + 3]
    mirrored = image.getCropped(0, 0, -7, 5)
    assert mirrored[0] == image[6] and sdk.last_call("ToviImage_crop")["width"] == -7
    for arguments in [(-1, 0, 1, 1), (0, 0, 0, 1), (0, 0, 8, 1), (5, 0, -3, 1), (0, 4, 1, 2), (0, 0, -2147483648, 1)]:
        with pytest.raises(ValueError, match=r"^Arguments are out of range\.$"):
            image.getCropped(*arguments)

    assert (image.getResized(14, 3).width, image.getDownscaled(7, 5).height) == (14, 5)
    for method, arguments in [("getResized", (0, 3)), ("getDownscaled", (8, 5)), ("getDownscaled", (7, 6))]:
        with pytest.raises(ValueError, match=r"^Image width and height out of range\.$"):
            getattr(image, method)(*arguments)

    for method in ("getResizedCropped", "getDownscaledCropped"):
        result = getattr(image, method)(1, 1, 6, 4, 3, 2)
        assert (result.width, result.height) == (3, 2)
        assert sdk.last_call("ToviImage_crop_resize") == {"x": 1, "y": 1, "cropWidth": 6, "cropHeight": 4,
                                                          "width": 3, "height": 2}
        for arguments in [(0, 0, 7, 5, 8, 5), (2, 0, 6, 5, 1, 1), (0, 0, 0, 5, 1, 1), (0, -1, 7, 5, 1, 1)]:
            with pytest.raises(ValueError, match=r"^Arguments are out of range\.$"):
                getattr(image, method)(*arguments)

    assert (image.getFitIn(14, 14).width, image.getFitIn(14, 14).height) == (14, 10)
    assert (image.getFitOut(14, 14).width, image.getFitOut(14, 14).height) == (20, 14)
    assert (image.getCutIn(3, 3).width, image.getCutIn(3, 3).height) == (3, 3)
    for method in ("getFitIn", "getFitOut", "getCutIn"):
        with pytest.raises(ValueError, match=r"^Image width and height must be greater than 0\.$"):
            getattr(image, method)(0, 1)
    with pytest.raises(RuntimeError, match=r"^Image operation failed\.$"):
        image.getResized(1 << 20, 1 << 20)


def test_drawing_and_colour_operations(sdk):
    target = tovi.ToviImage(4, 4)
    source = tovi.ToviImage(2, 2)
    for index in range(4):
        source[index] = tovi.AColor(1, 0.5, 0.25, 0.5)
    source.x, source.y = 2, 1
    assert target.draw(source) is True
    assert sdk.last_call("ToviImage_drawImage") == {"x": 2, "y": 1, "blend": 0}
    assert target[1 * 4 + 2] == source[0] and target[0] == tovi.AColor(0, 0, 0, 0)
    for arguments, keywords, expected in [((source, 0), {}, {"x": 0, "y": 1, "blend": 0}),
                                          ((source, 1, 2, "BLENDED"), {}, {"x": 1, "y": 2, "blend": 1}),
                                          ((source,), {"mode": "copy", "y": 0}, {"x": 2, "y": 0, "blend": 0}),
                                          ((source, 0, 0, "blen"), {}, {"x": 0, "y": 0, "blend": 0})]:
        target.draw(*arguments, **keywords)
        assert sdk.last_call("ToviImage_drawImage") == expected, arguments
    with pytest.raises(TypeError, match=r"^Expected argument of type ToviImage\.$"):
        target.draw(tovi.Color())

    image = tovi.ToviImage(1, 1)
    assert image.addColor(tovi.Color(0.25, 0.5, 0.75)) is True and image[0] == tovi.AColor(0.25, 0.5, 0.75, 0)
    image.addColor(tovi.AColor(0.25, 0, 0, 1))
    assert sdk.last_call("ToviImage_addColor") == {"color": [0.25, 0, 0, 1]} and image[0].alpha == 1
    with pytest.raises(TypeError, match=r"^Argument must be Color or AColor\.$"):
        image.addColor(tovi.Vector(1, 1, 1))
    with pytest.raises(TypeError, match=r"^One argument of type Color or AColor expected\.$"):
        image.addColor()
    assert image.changeExposure(1.0) and image[0] == tovi.AColor(1, 1, 1.5, 1)
    assert image.changeContrast(2.0) and image[0] == tovi.AColor(1.5, 1.5, 2.5, 1)
    assert image.makeNegative() and image[0] == tovi.AColor(-0.5, -0.5, -1.5, 1)
    assert image.changeGamma(-1.0) is False
    assert image.changeSRGB() and sdk.last_call("ToviImage_changeSRGB") == {"inverse": 0}
    assert image.changeSRGB([1]) and sdk.last_call("ToviImage_changeSRGB") == {"inverse": 1}


def test_conversions_and_measures(sdk):
    image = tovi.ToviImage(3, 1)
    image[0], image[1], image[2] = tovi.AColor(1, 0, 0, 1), tovi.AColor(0, 1, 0, 0.5), tovi.AColor(0, 0, 1, 0)
    data = image.toBitmapData()
    assert bytes(data) == bytes([0, 0, 255, 0, 255, 0, 255, 0, 0]) and data.readonly
    assert sdk.last_call("ToviImage_toBitmapData") == {"flags": 0, "stride": 0, "alphaValue": -1}
    assert bytes(image.toBitmapData(True, True, True, 16, 200))[:4] == bytes([255, 0, 0, 200])
    assert sdk.last_call("ToviImage_toBitmapData") == {"flags": 7, "stride": 16, "alphaValue": 200}
    with pytest.raises(RuntimeError, match=r"^Error converting image data\.$"):
        image.toBitmapData(stride=2)

    for kind, length in [(None, 3), ("bgra", 3), ("rgba32", 12), (3, 6), ("rgba_half_float", 6), ("bgr", 3)]:
        values = image.toIntList() if kind is None else image.toIntList(kind)
        assert type(values) is tovi.IntList and len(values) == length, kind
    assert struct.pack("<3i", *image.toIntList("bgr")) == bytes([0, 0, 255, 0, 255, 0, 255, 0, 0, 0, 0, 0])
    assert sdk.last_call("ToviImage_toIntList") == {"byteSize": 12, "format": 4}
    assert list(image.toIntList(1)[:4]) == list(struct.unpack("<4i", struct.pack("<4f", 1, 0, 0, 1)))
    with pytest.raises(RuntimeError, match="^Internal image error$"):
        image.toIntList(7)
    for kind in (-1, "rgb", 2.0):
        with pytest.raises(TypeError) as raised:
            image.toIntList(kind)
        assert str(raised.value) == RAW_FORMAT

    for mode, code in [("average", 1), ("WeightedAverage", 2), ("WEIGHTED_AVERAGE", 2), ("HIGHLIGHTS", 3),
                       ("unknown", 0), (2, 2), (True, 1)]:
        result = image.calculateWhiteBalanceMultiplier(mode)
        assert type(result) is tovi.AColor and sdk.last_call("ToviImage_calculateWhiteBalanceMultiplier") == {"mode": code}
    assert image.calculateWhiteBalanceMultiplier(0) == tovi.AColor(1, 1, 1, 1)
    with pytest.raises(RuntimeError, match="^Mode argument should be a string or integer$"):
        image.calculateWhiteBalanceMultiplier(1.0)

    other = tovi.ToviImage(image)
    assert image.calculateDifference(other) == 0.0
    other[0] = tovi.AColor(0, 0, 0, 1)
    assert image.calculateDifference(other) == pytest.approx(1 / 12)
    assert image.calculateDifference(tovi.ToviImage(2, 2)) == -1.0
    with pytest.raises(TypeError, match=r"^Expected argument of type ToviImage\.$"):
        image.calculateDifference(None)


def test_every_method_refuses_an_empty_image():
    empty = tovi.ToviImage.createFromRawData(b"", 7, 1, 1)
    calls = ["save('a.png')", "compress('png')", "getCropped(0, 0, 1, 1)", "getResized(1, 1)", "getDownscaled(1, 1)",
             "getResizedCropped(0, 0, 1, 1, 1, 1)", "getDownscaledCropped(0, 0, 1, 1, 1, 1)", "getFitIn(1, 1)",
             "getFitOut(1, 1)", "getCutIn(1, 1)", "draw(empty)", "addColor(tovi.Color())", "changeExposure(1)",
             "changeContrast(1)", "changeGamma(1)", "changeSRGB()", "makeNegative()", "toBitmapData()",
             "toIntList()", "calculateWhiteBalanceMultiplier(1)", "calculateDifference(empty)"]
    for call in calls:
        with pytest.raises(RuntimeError, match=f"^{NO_IMAGE}$"):
            eval("empty." + call, {"empty": empty, "tovi": tovi})


@pytest.mark.parametrize("operation", ["compress", "save", "decode", "createFromBuffer", "load", "toBitmapData"])
def test_codecs_run_without_the_interpreter_lock(operation, tmp_path):
    image = tovi.ToviImage(256, 256)
    path = str(tmp_path / "image.png")
    image.save(path)
    encoded = bytes(image.compress(type="png"))
    calls = {
        "compress": lambda: image.compress(type="png"),
        "save": lambda: image.save(path),
        "decode": lambda: tovi.ToviImage(encoded, "png"),
        "createFromBuffer": lambda: tovi.ToviImage.createFromBuffer(encoded, "png"),
        "load": lambda: tovi.ToviImage.load(path),
        "toBitmapData": lambda: image.toBitmapData(),
    }
    calls_at_most, done, stop = 200, [], threading.Event()

    def work():
        while len(done) < calls_at_most and not stop.is_set():
            calls[operation]()
            done.append(True)

    # Without forced switches the main thread runs while the worker loops only if the calls let
    # it: each call that keeps the lock makes the worker finish every call before the main
    # thread gets a turn.
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    try:
        worker = threading.Thread(target=work)
        worker.start()
        calls_before_main_ran = len(done)
        stop.set()
        worker.join(30)
    finally:
        sys.setswitchinterval(interval)
    assert not worker.is_alive() and calls_before_main_ran < calls_at_most


def test_no_leak_over_many_create_compress_free_cycles(sdk):
    def cycle():
        image = tovi.ToviImage(8, 8)
        encoded = image.compress(type="png")
        assert len(encoded) > 0

    for _ in range(100):
        cycle()
    blocks = sdk.live("blocks")
    tracemalloc.start()
    try:
        for _ in range(100):
            cycle()
        before, _ = tracemalloc.get_traced_memory()
        for _ in range(10_000):
            cycle()
        after, _ = tracemalloc.get_traced_memory()
    finally:
        tracemalloc.stop()
    assert after - before < 4096
    assert sdk.live("blocks") == blocks
