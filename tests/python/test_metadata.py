"""Property metadata and editor guides: every class and property of the catalogue, the order of
the keys, every row of the mapping tables (through injected declarations and codes where the
catalogue has no example), conditions evaluated on instances, and the error forms."""

import pytest
import tovi

META_KEYS = ["name", "aliases", "type", "defaultValue", "description", "deprecation", "uiGuides", "GPUSupport",
             "elementsCount", "runtimeType"]
GUIDE_KEYS = ["guideTypes", "enumStrings", "enabledDepends", "hiddenDepends", "displayName", "startRollout", "startTab",
              "minValue", "maxValue", "spinStep", "softMinValue", "softMaxValue", "units", "fileAssetOp", "quantity",
              "gpuSupport", "tier", "attributes", "fileAssetExts", "fileAssetExtNames", "stringEnumStrings",
              "overridenBy", "overrides", "defaultValue", "defaultValues", "enabled", "hidden"]
GUIDE_TYPES = ["Enum", "Enable", "DisplayName", "MinValue", "MaxValue", "SpinStep", "Units", "FileAsset", "Attributes",
               "StringEnum", "FileAssetNames", "FileAssetOp", "StartRollout", "StartTab", "SoftMinValue", "SoftMaxValue",
               "QuantityType", "OverridenBy", "Overrides", "GPUSupport", "Tier", "Hide", "DefaultValue"]


def in_order(keys, order):
    positions = [order.index(key) for key in keys]
    return positions == sorted(positions)


def test_every_class_and_property(sdk, renderer):
    blocks, texts, vectors = sdk.live("blocks"), sdk.live("texts"), sdk.live("vectors")
    for cls in renderer.classes:
        names = list(cls)
        class_meta, class_guides = cls.getMeta(), cls.getUIGuides()
        assert list(class_meta) == names and list(class_guides) == names
        plugin = cls()
        meta, guides = plugin.getMeta(), plugin.getUIGuides()
        assert list(meta) == names and list(guides) == names
        for name in names:
            assert in_order(list(class_meta[name]), META_KEYS) and in_order(list(meta[name]), META_KEYS)
            assert class_meta[name]["name"] == name and "runtimeType" in meta[name]
            assert cls[name] == class_meta[name] == getattr(cls, name) == cls.getMeta(name)
            default = class_meta[name]["defaultValue"]
            assert default == plugin.getValue(name), f"{cls}.{name}"
            assert meta[name]["defaultValue"] == default
            for form in (class_guides[name], guides[name]):
                assert in_order(list(form), GUIDE_KEYS), f"{cls}.{name}: {list(form)}"
                assert in_order(form["guideTypes"], GUIDE_TYPES)
            assert plugin.getUIGuides(name) == guides[name]
            # Only the instance form evaluates conditions.
            instance_only = set(guides[name]) - set(class_guides[name])
            assert instance_only <= {"enabled", "hidden"}
            assert ("enabled" in instance_only) == ("enabledDepends" in guides[name])
    assert (sdk.live("blocks"), sdk.live("texts"), sdk.live("vectors")) == (blocks, texts, vectors)


def test_catalogue_examples(renderer):
    guides = renderer.classes.SettingsImageSampler.getUIGuides("type")
    assert guides == {"guideTypes": ["Enum", "DisplayName", "StartRollout", "Tier"],
                      "enumStrings": {"Buckets": 0, "Progressive": 1}, "displayName": "Sampler type",
                      "startRollout": "Image sampler", "tier": "Basic"}
    file = renderer.classes.SettingsOutput.getUIGuides("img_file")
    assert file["fileAssetExts"] == ["png", "jpg", "exr", "tif", "bmp"] and file["fileAssetOp"] == "Save"
    assert file["fileAssetExtNames"][2] == "OpenEXR image"
    fov = renderer.classes.RenderView.getUIGuides("fov")
    assert (fov["units"], fov["quantity"], fov["overridenBy"], fov["hiddenDepends"]) == ("Radians", "Angle", "camera", ["orthographic"])
    assert fov["minValue"] == pytest.approx(0.0001) and fov["maxValue"] == pytest.approx(3.14159)
    assert renderer.classes.RenderView.getUIGuides("camera")["overrides"] == ["fov", "orthographic"]
    assert renderer.classes.UVWGenEnvironment.getUIGuides("mapping_type")["stringEnumStrings"][0] == "spherical"
    assert renderer.classes.SettingsUnitsInfo.getUIGuides("scene_upDir")["defaultValues"] == [0.0, 1.0, 0.0]
    assert renderer.classes.SettingsColorMapping.getUIGuides("clamp_output")["defaultValue"] is True
    assert renderer.classes.SettingsOutput.getUIGuides("img_width")["defaultValue"] == 1920
    distortion = renderer.classes.CameraPhysical.getMeta("distortion_coefficients")
    assert (distortion["GPUSupport"], distortion["elementsCount"]) == ("None", 0)
    assert renderer.classes.SettingsOutput.img_width["aliases"] == ["width"]
    assert renderer.classes.UVWGenChannel.getMeta("crop_uv")["elementsCount"] == 4


def test_conditions_follow_the_instance(renderer):
    sampler = renderer.classes.SettingsImageSampler()
    assert sampler.getUIGuides("fixed_subdivs")["hidden"] is True
    sampler.type = 0
    assert sampler.getUIGuides("fixed_subdivs")["hidden"] is False
    assert sampler.getUIGuides("progressive_maxTime")["hidden"] is True
    camera = renderer.classes.CameraPhysical()
    blades = camera.getUIGuides("blades_num")
    assert (blades["enabledDepends"], blades["enabled"]) == (["use_dof", "blades_enable"], False)
    camera.use_dof = True
    assert camera.getUIGuides("blades_num")["enabled"] is False
    camera.blades_enable = True
    assert camera.getUIGuides()["blades_num"]["enabled"] is True
    output = renderer.classes.SettingsOutput()
    assert output.getUIGuides("img_separateAlpha")["enabled"] is False
    output.img_file = "out.png"
    assert output.getUIGuides("img_separateAlpha")["enabled"] is True
    output.img_noAlpha = True
    assert output.getUIGuides("img_separateAlpha")["enabled"] is False


def test_missing_properties_and_wrong_names(renderer):
    cls = renderer.classes.Node
    plugin = cls("node")
    message = "Error accessing property 'nope' or wrong property name"
    with pytest.raises(NameError, match=message):
        plugin.getMeta("nope")
    with pytest.raises(NameError, match=message):
        cls.getMeta("nope")
    with pytest.raises(AttributeError, match=message):
        cls.nope
    with pytest.raises(KeyError) as error:
        cls["nope"]
    assert error.value.args == ("nope",)
    for call in (plugin.getMeta, plugin.getUIGuides, cls.getMeta, cls.getUIGuides):
        with pytest.raises(TypeError, match="You must provide a property name as a text string."):
            call(5)
    assert plugin.getUIGuides("nope") is None and cls.getUIGuides("nope") is None
    assert plugin.getMeta("camera_visibility")["name"] == "primary_visibility"
    plugin.deleteThis()
    assert plugin.getMeta() == {} and plugin.getUIGuides() == {}


# ---- the mapping tables, one row each ----

def declared(sdk, renderer, declaration, guides=True):
    """The class-form dictionary of a property declared in the class definition text."""
    sdk.inject("Tovi_ToviRenderer_getPropertyDefinitionFromClass", f'class Injected "i"\n  {declaration}\n')
    cls = renderer.classes.Node
    return cls.getUIGuides("any") if guides else cls.getMeta("any")


GUIDE_EXAMPLES = ['enum=(0:"a")', "enable=a", 'displayName="d"', "min=1", "max=1", "step=1", "units=meters",
                  'fileAsset=("x")', "attributes=(boolean)", 'stringEnum=("a")', 'fileAssetNames=("x")',
                  "fileAssetOp=save", 'rollout="r"', 'tab="t"', "softMin=1", "softMax=1", "quantity=angle",
                  'overriddenBy="o"', 'overrides=("o")', "gpu=partial", "tier=basic", "hide=a", "default=(1)"]


@pytest.mark.parametrize("index", range(23))
def test_guide_type_names(sdk, renderer, index):
    guides = declared(sdk, renderer, f'p : float = 0 "p" {{{GUIDE_EXAMPLES[index]}}}')
    assert guides["guideTypes"] == [GUIDE_TYPES[index]]
    # Hide has no key of its own; every other guide has one.
    own = set(guides) - {"guideTypes", "enabledDepends", "hiddenDepends"}
    assert (len(own) == 0) == (GUIDE_TYPES[index] in ("Hide", "Enable"))


CODE_TABLES = {
    "Tovi_UIGuides_getUnits": ("units", "units=meters", ["Default", "Radians", "Degrees", "Millimeters", "Centimeters", "Meters"], "Default"),
    "Tovi_UIGuides_getFileAssetOp": ("fileAssetOp", "fileAssetOp=save", ["Load", "Save", "LoadAndSave"], "Load"),
    "Tovi_UIGuides_getQuantityType": ("quantity", "quantity=angle", ["Unknown", "Distance", "Angle", "LocalSubdivs"], "Unknown"),
    "Tovi_UIGuides_getGPUSupportStatus": ("gpuSupport", "gpu=none", ["Full", "Partial", "None"], "Unknown"),
    "Tovi_UIGuides_getTier": ("tier", "tier=advanced", ["Basic", "Default", "Advanced"], "Default"),
}
CODE_ROWS = [(entry, code, names[code] if 0 <= code < len(names) else other)
             for entry, (key, guide, names, other) in CODE_TABLES.items() for code in [*range(len(names)), len(names), -1]]


@pytest.mark.parametrize("entry, code, name", CODE_ROWS)
def test_guide_code_names(sdk, renderer, entry, code, name):
    key, guide, names, other = CODE_TABLES[entry]
    sdk.inject("Tovi_ToviRenderer_getPropertyDefinitionFromClass", f'class I "i"\n  p : int = 0 "p" {{{guide}}}\n')
    sdk.inject(entry, code)
    assert renderer.classes.Node.getUIGuides("p")[key] == name


@pytest.mark.parametrize("code, name", [(0, "Full"), (1, "Partial"), (2, "None"), (3, "Unknown"), (-1, "Unknown")])
def test_property_gpu_support_names(sdk, renderer, code, name):
    sdk.inject("Tovi_PluginUtils_getPropertyGpuSupport", code)
    assert renderer.classes.Node.getMeta("visible")["GPUSupport"] == name
    assert sdk.last_call("Tovi_PluginUtils_getPropertyGpuSupport")["className"] == "Node"
    plugin = renderer.classes.LightOmni()
    plugin.getMeta("decay")
    assert sdk.last_call("Tovi_PluginUtils_getPropertyGpuSupport")["className"] == "LightOmni"


ATTRIBUTES = [("objectSet", "ObjectSet"), ("textureSlot", "TextureSlot"), ("lightSet", "LightSet"),
              ("tripleComponent", "PartOf3dsMaxTriple"), ("bitSet", "BitSet"), ("boolean", "Boolean"), ("none", "None")]


@pytest.mark.parametrize("declared_name, name", ATTRIBUTES)
def test_attribute_names(sdk, renderer, declared_name, name):
    assert declared(sdk, renderer, f'p : int = 0 "p" {{attributes=({declared_name})}}')["attributes"] == [name]


def test_attributes_in_bit_order(sdk, renderer):
    every = ", ".join(declared for declared, _ in reversed(ATTRIBUTES))
    assert declared(sdk, renderer, f'p : int = 0 "p" {{attributes=({every})}}')["attributes"] == [n for _, n in ATTRIBUTES]


@pytest.mark.parametrize("declaration, key, value", [
    ('p : int = 0 "p" {default=(2.5)}', "defaultValue", 3),
    ('p : int = 0 "p" {default=(-2.5)}', "defaultValue", -3),
    ('p : int = 0 "p" {default=(2.4)}', "defaultValue", 2),
    ('p : boolean = false "p" {default=(0.4)}', "defaultValue", False),
    ('p : boolean = false "p" {default=(0.6)}', "defaultValue", True),
    ('p : float = 0 "p" {default=(2.5)}', "defaultValue", 2.5),
    ('p : Vector = Vector(0, 0, 0) "p" {default=(1, 2, 3)}', "defaultValues", [1.0, 2.0, 3.0]),
    ('p : float = 0 "p" {default=()}', "defaultValues", []),
])
def test_editor_defaults(sdk, renderer, declaration, key, value):
    guides = declared(sdk, renderer, declaration)
    assert guides[key] == value and type(guides[key]) is type(value)
    assert sdk.last_call("Tovi_UIGuides_getFloats")["guideType"] == 22


def test_many_editor_defaults_fit(sdk, renderer):
    values = [float(n) for n in range(100)]
    text = ", ".join(str(n) for n in range(100))
    assert declared(sdk, renderer, f'p : List<float> = ListFloat() "p" {{default=({text})}}')["defaultValues"] == values
    assert sdk.last_call("Tovi_UIGuides_getFloats")["capacity"] >= 100


@pytest.mark.parametrize("declaration, aliases, default", [
    ('p (a, b) : int = 1 "p"', ["a", "b"], 1),
    ('p : int "p"', [], None),
    ('p (q) : String = "x" "p"', ["q"], "x"),
])
def test_aliases_and_missing_defaults(sdk, renderer, declaration, aliases, default):
    meta = declared(sdk, renderer, declaration, guides=False)
    assert (meta["aliases"], meta["defaultValue"]) == (aliases, default)
    assert (meta["description"], meta["uiGuides"], meta["deprecation"]) == ("p", "", None)
