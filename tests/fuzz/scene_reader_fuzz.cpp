// libFuzzer target of the scene file reader. Whatever a text makes of a scene must export and
// load back to the same scene; anything else (a crash, a leak, a sanitizer report, a round trip
// that differs) is a finding.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "format/scene_loader.h"
#include "format/scene_writer.h"
#include "scene/catalogue.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;
using namespace tovi::ref::format;

namespace {

// The fuzzer's texts reach no file: includes and side data files are all missing.
class NoFiles : public FileAccess {
public:
    std::optional<std::string> readAll(const std::string&) const override { return std::nullopt; }
    std::optional<std::vector<uint8_t>> readRange(const std::string&, uint64_t, uint64_t) const override {
        return std::nullopt;
    }
};

// Leaves out names starting with 'x' and renames those starting with 'r', so that the filter's
// paths are taken too.
std::optional<std::string> filter(const std::string&, const std::string& name) {
    if (!name.empty() && name[0] == 'x') return std::nullopt;
    if (!name.empty() && name[0] == 'r') return name + "_r";
    return name;
}

void check(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const NoFiles files;
    std::string text(reinterpret_cast<const char*>(data), size);
    SceneDatabase scene(catalogue(), false);
    LoadOptions options;
    options.files = &files;
    options.filter = filter;
    // Appending to a scene that has plugins takes the paths of names that exist.
    check(!loadScene(scene, {{false, "Node node { }\nTexChecker checker { }"}}, options));
    if (loadScene(scene, {{false, text}}, options)) return 0;

    for (bool packed : {false, true}) {
        std::string written = sceneText(scene, ValueFormat{packed, packed, packed, nullptr});
        SceneDatabase again(catalogue(), false);
        LoadOptions plain;
        plain.files = &files;
        plain.replaceScene = true;
        check(!loadScene(again, {{false, written}}, plain));
        check(sceneText(again, ValueFormat{packed, packed, packed, nullptr}) == written);
    }
    return 0;
}
