#include "kivo/session/internal/instance/parts.h"

#include <algorithm>
#include <iterator>

#include "kivo/session/internal/instance/words.h"

namespace kivo_session {

namespace {

// Of one port; also of what ties it, which is written bit by bit.
constexpr Whole kWidest = 1 << 20;

constexpr std::uint8_t kPrivate = 0;
constexpr std::uint8_t kConstant = 1;

// The bits of a two's complement number, the highest first.
std::string bits_of(Whole number, std::uint32_t width) {
    constexpr std::uint32_t kSign = 127;
    std::string bits;
    bits.reserve(width);
    for (std::uint32_t bit = width; bit-- > 0;) {
        bits += (number >> std::min(bit, kSign) & 1) != 0 ? '1' : '0';
    }
    return bits;
}

std::vector<std::string> split_libraries(std::string_view list) {
    std::vector<std::string> entries;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        std::string entry;
        std::copy_if(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(end),
                     std::back_inserter(entry), [](char letter) { return letter > ' '; });
        if (!entry.empty()) {
            entries.push_back(std::move(entry));
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return entries;
}

class Collector {
public:
    explicit Collector(Engine& engine)
        : engine_(engine), description_(*engine.model().description) {
        if (engine.map() != kNone) {
            map_ = &description_.maps[engine.map()];
            list_ports();
        }
    }

    InstanceParts collect(const KIVO_INSTANCE_OPTIONS& options) {
        parts_.module = !options.module.empty() ? options.module
                        : map_ != nullptr && !map_->module_name.empty()
                            ? std::string(map_->module_name)
                            : folded(description_.function_name);
        parts_.libraries = split_libraries(description_.vhdl_library);
        for (std::uint32_t i = 0; i < description_.objects.size(); ++i) {
            const ObjectKind kind = description_.objects[i].kind;
            if (kind == ObjectKind::kInteger || kind == ObjectKind::kString) {
                add_generic(i);
            } else if (is_port(kind) && kind != ObjectKind::kBuried) {
                add_port(i);
            }
        }
        std::stable_partition(parts_.generics.begin(), parts_.generics.end(),
                              [](const InstanceGeneric& generic) { return !generic.is_hint; });
        return std::move(parts_);
    }

private:
    void list_ports() {
        is_listed_.resize(description_.objects.size());
        for (std::uint32_t i = map_->presets.begin; i < map_->presets.end; ++i) {
            is_listed_[description_.presets[i].object] = true;
        }
    }

    bool is_mapped(std::uint32_t port) const {
        return map_ == nullptr || is_listed_[port] ||
               (map_->maps_used_ports && description_.objects[port].is_always_used);
    }

    void add_problem(std::uint32_t object, const std::string& what) {
        parts_.problems.push_back(std::string(description_.objects[object].name) + what);
    }

    void add_generic(std::uint32_t index) {
        const Object& object = description_.objects[index];
        const bool is_left_out =
            object.connection == kPrivate ||
            (object.connection == kConstant && map_ != nullptr && !map_->maps_constants);
        if (is_left_out) {
            return;
        }
        const Value value = engine_.value(index);
        if (value.is_unknown()) {
            return add_problem(index, " has no value");
        }
        InstanceGeneric generic;
        generic.name = object.name;
        generic.text = engine_.text_of(value);
        generic.is_hint = object.is_hint;
        if (object.kind == ObjectKind::kInteger && value.is_whole()) {
            generic.number = value.as_whole();
        }
        parts_.generics.push_back(std::move(generic));
    }

    void add_port(std::uint32_t index) {
        if (!is_mapped(index)) {
            return;
        }
        const Object& object = description_.objects[index];
        const Value state = engine_.value(index);
        if (state.is_unknown()) {
            return add_problem(index, " is connected or not, which is not known");
        }
        const auto word = static_cast<PortState>(state.low);
        const bool is_open = is_connected(word);
        if (!is_open && word == PortState::kUnused && !engine_.is_tied(index)) {
            return;
        }
        InstancePort port;
        port.name = object.name;
        port.direction = object.kind == ObjectKind::kInput    ? Direction::kInput
                         : object.kind == ObjectKind::kOutput ? Direction::kOutput
                                                              : Direction::kBidir;
        port.is_scalar = object.width == kNone && object.width2d == kNone;
        if (!read_width(index, port) || (!is_open && !read_constant(index, port))) {
            return;
        }
        parts_.ports.push_back(std::move(port));
    }

    bool read_width(std::uint32_t index, InstancePort& port) {
        const std::uint32_t second = description_.objects[index].width2d;
        Whole width = 1;
        for (const Value& value :
             {engine_.width(index),
              second == kNone ? Value::integer(1) : engine_.evaluate_text(second)}) {
            if (!value.is_whole() || value.as_whole() < 1) {
                add_problem(index, " has no width");
                return false;
            }
            // The product of two numbers within the limit cannot overflow.
            width *= std::min(value.as_whole(), kWidest + 1);
        }
        if (width > kWidest) {
            add_problem(index, " is wider than " + to_text(kWidest) + " bits");
            return false;
        }
        port.width = static_cast<std::uint32_t>(width);
        return true;
    }

    bool read_constant(std::uint32_t index, InstancePort& port) {
        const Value constant = engine_.constant(index);
        if (!constant.is_whole()) {
            add_problem(index, " is tied to a value that is not known");
            return false;
        }
        if (port.direction != Direction::kInput) {
            add_problem(index, " is no input, and only inputs can be tied to a constant");
            return false;
        }
        port.bits = bits_of(constant.as_whole(), port.width);
        return true;
    }

    Engine& engine_;
    const Description& description_;
    const WizardMap* map_ = nullptr;
    std::vector<bool> is_listed_;  // by object: by the map
    InstanceParts parts_;
};

}  // namespace

InstanceParts collect_parts(Engine& engine, const KIVO_INSTANCE_OPTIONS& options) {
    return Collector(engine).collect(options);
}

}  // namespace kivo_session
