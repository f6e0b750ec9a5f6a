#include "scene/database.h"

#include <cmath>
#include <deque>
#include <iterator>
#include <set>

namespace tovi::ref::scene {

namespace {

// The output settings carry the scene's frame rate.
constexpr std::string_view outputSettingsClass = "SettingsOutput";
constexpr std::string_view frameRateProperty = "frames_per_second";
constexpr double fallbackFrameRate = 24.0;

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '@' || c == '|' ||
           c == '_';
}

}  // namespace

SceneDatabase::SceneDatabase(const ClassRegistry& classes, bool allowAnyNameCharacters)
    : classes_(classes), allowAnyNameCharacters_(allowAnyNameCharacters) {}

SceneDatabase::PluginRecord* SceneDatabase::findLocked(ToviPluginID id) const {
    auto found = plugins_.find(id);
    return found == plugins_.end() ? nullptr : found->second.get();
}

bool SceneDatabase::isValidName(std::string_view name) const {
    if (name.empty()) return false;
    if (allowAnyNameCharacters_) return true;
    for (char c : name) {
        if (!isNameCharacter(c)) return false;
    }
    return true;
}

SceneStatus SceneDatabase::checkNewName(std::string_view name) const {
    if (!isValidName(name)) return SceneStatus::InvalidName;
    if (byName_.count(name)) return SceneStatus::NameTaken;
    return SceneStatus::Ok;
}

void SceneDatabase::changedLocked(bool autoCommit) {
    uncommitted_ = true;
    if (autoCommit) {
        ++changeIndex_;
        uncommitted_ = false;
    }
}

SceneStatus SceneDatabase::createPlugin(std::optional<std::string_view> name, std::string_view className,
                                        bool autoCommit, ToviPluginID* newID) {
    const PluginClass* pluginClass = classes_.find(className);
    if (!pluginClass) return SceneStatus::ClassNotFound;
    std::lock_guard<std::mutex> lock(mutex_);
    std::string chosen;
    if (name) {
        SceneStatus status = checkNewName(*name);
        if (status != SceneStatus::Ok) return status;
        chosen = std::string(*name);
    } else {
        do {
            chosen = pluginClass->name() + "@" + std::to_string(nextAutomaticName_++);
        } while (byName_.count(chosen));
    }
    auto record = std::make_unique<PluginRecord>();
    record->id = nextID_++;
    record->name = chosen;
    record->pluginClass = pluginClass;
    record->slots.resize(pluginClass->propertyCount());
    ToviPluginID id = record->id;
    byName_.emplace(chosen, id);
    plugins_.emplace(id, std::move(record));
    changedLocked(autoCommit);
    if (newID) *newID = id;
    return SceneStatus::Ok;
}

void SceneDatabase::redirectLocked(ToviPluginID id, ToviPluginID replacement) {
    const PluginRecord* old = findLocked(id);
    const PluginRecord* target = replacement == TOVI_NO_PLUGIN ? nullptr : findLocked(replacement);
    auto redirect = [&](PluginRef& ref) {
        if (ref.id != id) return;
        int output = 0;
        if (target && old && ref.output > 0) {
            const PropertyDefinition* oldOutput = old->pluginClass->propertyAt(ref.output);
            const PropertyDefinition* newOutput = oldOutput ? target->pluginClass->findProperty(oldOutput->name) : nullptr;
            if (newOutput && isOutput(newOutput->type)) output = newOutput->index;
        }
        ref.id = target ? replacement : TOVI_NO_PLUGIN;
        ref.output = output;
    };
    for (auto& [pluginID, record] : plugins_) {
        for (auto& slot : record->slots) {
            forEachPluginRef(slot.value, redirect);
            for (auto& [time, key] : slot.keyframes) forEachPluginRef(key, redirect);
        }
    }
}

SceneStatus SceneDatabase::deletePlugin(ToviPluginID id, bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    PluginRecord* record = findLocked(id);
    if (!record) return SceneStatus::PluginNotFound;
    redirectLocked(id, TOVI_NO_PLUGIN);
    byName_.erase(record->name);
    plugins_.erase(id);
    changedLocked(autoCommit);
    return SceneStatus::Ok;
}

SceneStatus SceneDatabase::renamePlugin(ToviPluginID id, std::string_view newName, bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    PluginRecord* record = findLocked(id);
    if (!record) return SceneStatus::PluginNotFound;
    if (record->name == newName) return SceneStatus::Ok;
    SceneStatus status = checkNewName(newName);
    if (status != SceneStatus::Ok) return status;
    byName_.erase(record->name);
    record->name = std::string(newName);
    byName_.emplace(record->name, id);
    changedLocked(autoCommit);
    return SceneStatus::Ok;
}

SceneStatus SceneDatabase::replacePlugin(ToviPluginID id, ToviPluginID replacement, bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!findLocked(id)) return SceneStatus::PluginNotFound;
    if (replacement != TOVI_NO_PLUGIN && !findLocked(replacement)) return SceneStatus::PluginNotFound;
    if (replacement == id) return SceneStatus::Ok;
    redirectLocked(id, replacement);
    changedLocked(autoCommit);
    return SceneStatus::Ok;
}

void SceneDatabase::clear(bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    plugins_.clear();
    byName_.clear();
    changedLocked(autoCommit);
}

bool SceneDatabase::pluginExists(ToviPluginID id) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return findLocked(id) != nullptr;
}

ToviPluginID SceneDatabase::findPlugin(std::string_view name) const {
    std::lock_guard<std::mutex> lock(mutex_);
    auto found = byName_.find(name);
    return found == byName_.end() ? TOVI_NO_PLUGIN : found->second;
}

const char* SceneDatabase::pluginName(ToviPluginID id) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    return record ? record->name.c_str() : nullptr;
}

std::optional<std::string> SceneDatabase::copyPluginName(ToviPluginID id) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    if (!record) return std::nullopt;
    return record->name;
}

const PluginClass* SceneDatabase::pluginClass(ToviPluginID id) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    return record ? record->pluginClass : nullptr;
}

std::vector<ToviPluginID> SceneDatabase::pluginIDs(const PluginClass* ofClass) const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<ToviPluginID> ids;
    for (const auto& [id, record] : plugins_) {
        if (!ofClass || record->pluginClass == ofClass) ids.push_back(id);
    }
    return ids;
}

std::vector<std::string> SceneDatabase::pluginNames() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<std::string> names;
    names.reserve(plugins_.size());
    for (const auto& [id, record] : plugins_) names.push_back(record->name);
    return names;
}

const PropertyDefinition* SceneDatabase::findProperty(ToviPluginID id, std::string_view property) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    return record ? record->pluginClass->findProperty(property) : nullptr;
}

bool SceneDatabase::referencesAreValid(Value& value) const {
    bool valid = true;
    forEachPluginRef(value, [&](PluginRef& ref) {
        if (ref.isNone()) {
            ref.output = 0;
            return;
        }
        const PluginRecord* target = findLocked(ref.id);
        if (!target) {
            valid = false;
            return;
        }
        if (ref.output < 0) ref.output = 0;
        if (ref.output > 0) {
            const PropertyDefinition* output = target->pluginClass->propertyAt(ref.output);
            valid = valid && output && isOutput(output->type);
        }
    });
    return valid;
}

SceneStatus SceneDatabase::setValue(ToviPluginID id, std::string_view property, Value value, double time,
                                    bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    PluginRecord* record = findLocked(id);
    if (!record) return SceneStatus::PluginNotFound;
    const PropertyDefinition* definition = record->pluginClass->findProperty(property);
    if (!definition) return SceneStatus::PropertyNotFound;
    auto conformed = conformToType(std::move(value), definition->type, definition->elementsCount);
    if (!conformed || !referencesAreValid(*conformed)) return SceneStatus::InvalidValue;
    PropertySlot& slot = record->slots[definition->index];
    bool explicitTime = !std::isnan(time);
    if (explicitTime || animate_) {
        if (slot.state != PropertyState::Animated) slot.keyframes.clear();
        slot.keyframes[explicitTime ? time : currentTime_] = std::move(*conformed);
        slot.value = Value();
        slot.state = PropertyState::Animated;
    } else {
        slot.keyframes.clear();
        slot.value = std::move(*conformed);
        slot.state = PropertyState::NotAnimated;
    }
    changedLocked(autoCommit);
    return SceneStatus::Ok;
}

BatchResult SceneDatabase::checkBatchLocked(SceneBatch& batch, bool replaceScene) const {
    BatchResult result;
    std::map<std::string_view, size_t> batchNames;
    for (size_t index = 0; index < batch.plugins.size(); ++index) {
        const std::string& name = batch.plugins[index].name;
        result.plugin = index;
        if (!batch.plugins[index].pluginClass) return result.status = SceneStatus::ClassNotFound, result;
        if (!isValidName(name)) return result.status = SceneStatus::InvalidName, result;
        if ((!replaceScene && byName_.count(name)) || !batchNames.emplace(name, index).second) {
            return result.status = SceneStatus::NameTaken, result;
        }
    }
    result.plugin = std::string::npos;
    auto classOf = [&](ToviPluginID id) -> const PluginClass* {
        if (id & batchPluginFlag) {
            size_t index = id & ~batchPluginFlag;
            return index < batch.plugins.size() ? batch.plugins[index].pluginClass : nullptr;
        }
        const PluginRecord* record = replaceScene ? nullptr : findLocked(id);
        return record ? record->pluginClass : nullptr;
    };
    for (size_t index = 0; index < batch.assignments.size(); ++index) {
        auto& assignment = batch.assignments[index];
        result.assignment = index;
        const PluginClass* owner = classOf(assignment.plugin);
        if (!owner) return result.status = SceneStatus::PluginNotFound, result;
        const PropertyDefinition* definition = assignment.definition;
        if (!definition || owner->propertyAt(definition->index) != definition) {
            return result.status = SceneStatus::PropertyNotFound, result;
        }
        auto check = [&](Value& value) {
            auto conformed = conformToType(std::move(value), definition->type, definition->elementsCount);
            if (!conformed) return false;
            value = std::move(*conformed);
            bool valid = true;
            forEachPluginRef(value, [&](PluginRef& ref) {
                if (ref.isNone()) return;
                const PluginClass* target = classOf(ref.id);
                const PropertyDefinition* output = target && ref.output > 0 ? target->propertyAt(ref.output) : nullptr;
                valid = valid && target && (ref.output == 0 || (output && isOutput(output->type)));
            });
            return valid;
        };
        bool valid = true;
        if (assignment.keyframes.empty()) {
            valid = check(assignment.value);
        } else {
            for (auto& [time, key] : assignment.keyframes) valid = valid && !std::isnan(time) && check(key);
        }
        if (!valid) return result.status = SceneStatus::InvalidValue, result;
    }
    return BatchResult{};
}

void SceneDatabase::applyBatchLocked(SceneBatch& batch, bool autoCommit) {
    std::vector<ToviPluginID> created;
    created.reserve(batch.plugins.size());
    for (auto& plugin : batch.plugins) {
        auto record = std::make_unique<PluginRecord>();
        record->id = nextID_++;
        record->name = std::move(plugin.name);
        record->pluginClass = plugin.pluginClass;
        record->slots.resize(plugin.pluginClass->propertyCount());
        created.push_back(record->id);
        byName_.emplace(record->name, record->id);
        plugins_.emplace(record->id, std::move(record));
    }
    auto real = [&](ToviPluginID id) { return id & batchPluginFlag ? created[id & ~batchPluginFlag] : id; };
    auto remap = [&](Value& value) { forEachPluginRef(value, [&](PluginRef& ref) { if (!ref.isNone()) ref.id = real(ref.id); }); };
    for (auto& assignment : batch.assignments) {
        PropertySlot& slot = findLocked(real(assignment.plugin))->slots[assignment.definition->index];
        if (assignment.keyframes.empty()) {
            remap(assignment.value);
            slot.keyframes.clear();
            slot.value = std::move(assignment.value);
            slot.state = PropertyState::NotAnimated;
            continue;
        }
        if (slot.state != PropertyState::Animated) slot.keyframes.clear();
        for (auto& [time, key] : assignment.keyframes) {
            remap(key);
            slot.keyframes[time] = std::move(key);
        }
        slot.value = Value();
        slot.state = PropertyState::Animated;
    }
    changedLocked(autoCommit);
}

BatchResult SceneDatabase::apply(SceneBatch batch, bool replaceScene, bool autoCommit) {
    std::lock_guard<std::mutex> lock(mutex_);
    BatchResult result = checkBatchLocked(batch, replaceScene);
    if (result.status != SceneStatus::Ok) return result;
    // Only running out of memory can stop the changes now; the scene then goes back to how it was
    // as far as plugins go.
    auto oldPlugins = std::move(plugins_);
    auto oldNames = std::move(byName_);
    plugins_.clear();
    byName_.clear();
    ToviPluginID firstNew = nextID_;
    if (!replaceScene) {
        plugins_ = std::move(oldPlugins);
        byName_ = std::move(oldNames);
    }
    try {
        applyBatchLocked(batch, autoCommit);
    } catch (...) {
        if (replaceScene) {
            plugins_ = std::move(oldPlugins);
            byName_ = std::move(oldNames);
        } else {
            for (auto found = plugins_.lower_bound(firstNew); found != plugins_.end();) {
                byName_.erase(found->second->name);
                found = plugins_.erase(found);
            }
        }
        throw;
    }
    return result;
}

std::vector<PluginContents> SceneDatabase::contents(const std::vector<ToviPluginID>* only) const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<const PluginRecord*> records;
    if (only) {
        for (ToviPluginID id : *only) {
            if (const PluginRecord* record = findLocked(id)) records.push_back(record);
        }
    } else {
        for (const auto& [id, record] : plugins_) records.push_back(record.get());
    }
    std::vector<PluginContents> copies;
    copies.reserve(records.size());
    for (const PluginRecord* record : records) {
        PluginContents copy{record->id, record->name, record->pluginClass, {}};
        for (size_t index = 0; index < record->slots.size(); ++index) {
            const PropertySlot& slot = record->slots[index];
            if (slot.state != PropertyState::NotAnimated && slot.state != PropertyState::Animated) continue;
            copy.properties.push_back({&record->pluginClass->property(index), slot.state, slot.value, slot.keyframes});
        }
        copies.push_back(std::move(copy));
    }
    return copies;
}

Value SceneDatabase::valueAt(const PropertySlot& slot, double time) const {
    const auto& keys = slot.keyframes;
    auto after = keys.lower_bound(time);
    if (after == keys.end()) return std::prev(after)->second;
    if (after->first == time || after == keys.begin()) return after->second;
    auto before = std::prev(after);
    double weight = (time - before->first) / (after->first - before->first);
    return interpolate(before->second, after->second, weight);
}

PropertyRead SceneDatabase::getValue(ToviPluginID id, std::string_view property, double time) const {
    std::lock_guard<std::mutex> lock(mutex_);
    PropertyRead read;
    const PluginRecord* record = findLocked(id);
    if (!record) return read;
    read.definition = record->pluginClass->findProperty(property);
    if (!read.definition) {
        read.status = SceneStatus::PropertyNotFound;
        return read;
    }
    read.status = SceneStatus::Ok;
    const PropertySlot& slot = record->slots[read.definition->index];
    read.state = slot.state;
    switch (slot.state) {
        case PropertyState::Default: read.value = read.definition->defaultValue; break;
        case PropertyState::NotAnimated: read.value = slot.value; break;
        case PropertyState::Animated: read.value = valueAt(slot, std::isnan(time) ? currentTime_ : time); break;
        case PropertyState::Invalid: break;
    }
    return read;
}

PropertyState SceneDatabase::propertyState(ToviPluginID id, std::string_view property) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    const PropertyDefinition* definition = record ? record->pluginClass->findProperty(property) : nullptr;
    return definition ? record->slots[definition->index].state : PropertyState::Invalid;
}

std::optional<std::vector<double>> SceneDatabase::keyframeTimes(ToviPluginID id, std::string_view property) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const PluginRecord* record = findLocked(id);
    const PropertyDefinition* definition = record ? record->pluginClass->findProperty(property) : nullptr;
    if (!definition) return std::nullopt;
    std::vector<double> times;
    for (const auto& [time, key] : record->slots[definition->index].keyframes) times.push_back(time);
    return times;
}

std::optional<Value> SceneDatabase::currentValueLocked(const PluginRecord& record, size_t index) const {
    const PropertySlot& slot = record.slots[index];
    switch (slot.state) {
        case PropertyState::Default: return record.pluginClass->property(index).defaultValue;
        case PropertyState::NotAnimated: return slot.value;
        case PropertyState::Animated: return valueAt(slot, currentTime_);
        case PropertyState::Invalid: break;
    }
    return std::nullopt;
}

template <typename Visit>
void SceneDatabase::forEachLinkFromLocked(const PluginRecord& record, Visit&& visit) const {
    for (size_t index = 0; index < record.slots.size(); ++index) {
        std::optional<Value> value = currentValueLocked(record, index);
        if (!value) continue;
        forEachPluginRef(*value, [&](PluginRef& ref) {
            if (!ref.isNone()) visit(PluginLink{ref.id, record.id, ref.output, static_cast<int32_t>(index)});
        });
    }
}

std::vector<PluginLink> SceneDatabase::childLinks(ToviPluginID id, bool recursive) const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<PluginLink> links;
    if (!findLocked(id)) return links;
    std::deque<ToviPluginID> pending{id};
    std::set<ToviPluginID> seen{id};
    while (!pending.empty()) {
        const PluginRecord* record = findLocked(pending.front());
        pending.pop_front();
        if (!record) continue;
        forEachLinkFromLocked(*record, [&](const PluginLink& link) {
            links.push_back(link);
            if (recursive && seen.insert(link.referenced).second) pending.push_back(link.referenced);
        });
    }
    return links;
}

std::vector<PluginLink> SceneDatabase::parentLinks(ToviPluginID id, bool recursive) const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<PluginLink> links;
    if (!findLocked(id)) return links;
    std::deque<ToviPluginID> pending{id};
    std::set<ToviPluginID> seen{id};
    while (!pending.empty()) {
        ToviPluginID child = pending.front();
        pending.pop_front();
        for (const auto& [parentID, record] : plugins_) {
            forEachLinkFromLocked(*record, [&](const PluginLink& link) {
                if (link.referenced != child) return;
                links.push_back(link);
                if (recursive && seen.insert(link.referencing).second) pending.push_back(link.referencing);
            });
        }
    }
    return links;
}

double SceneDatabase::framesPerSecondLocked() const {
    for (const auto& [id, record] : plugins_) {
        if (record->pluginClass->name() != outputSettingsClass) continue;
        const PropertyDefinition* definition = record->pluginClass->findProperty(frameRateProperty);
        if (!definition) break;
        const PropertySlot& slot = record->slots[definition->index];
        std::optional<Value> rate = definition->defaultValue;
        if (slot.state == PropertyState::NotAnimated) rate = slot.value;
        if (slot.state == PropertyState::Animated) rate = slot.keyframes.begin()->second;
        if (rate && rate->is<float>() && rate->as<float>() > 0) return rate->as<float>();
        break;
    }
    return fallbackFrameRate;
}

void SceneDatabase::setCurrentTime(double seconds) {
    std::lock_guard<std::mutex> lock(mutex_);
    currentTime_ = seconds;
    // A hair of tolerance so that times computed from frames map back to the same frame.
    currentFrame_ = static_cast<int>(std::floor(seconds * framesPerSecondLocked() + 1e-6));
}

double SceneDatabase::currentTime() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return currentTime_;
}

void SceneDatabase::setCurrentFrame(int frame) {
    std::lock_guard<std::mutex> lock(mutex_);
    currentFrame_ = frame;
    currentTime_ = frame / framesPerSecondLocked();
}

int SceneDatabase::currentFrame() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return currentFrame_;
}

void SceneDatabase::setAnimateProperties(bool animate) {
    std::lock_guard<std::mutex> lock(mutex_);
    animate_ = animate;
}

bool SceneDatabase::animateProperties() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return animate_;
}

uint64_t SceneDatabase::commit(bool force) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!uncommitted_ && !force) return 0;
    uncommitted_ = false;
    return ++changeIndex_;
}

uint64_t SceneDatabase::changeIndex() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return changeIndex_;
}

}  // namespace tovi::ref::scene
