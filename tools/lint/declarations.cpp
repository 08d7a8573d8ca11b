#include <map>
#include <set>
#include <vector>

#include "tools/lint/rooms.h"

namespace {

// clang-format off
constexpr LintRow kOtherKind = {
    "other-kind", "{} {} reaches the {} of that name"};
constexpr LintRow kTypeMissing = {
    "type-missing", "{} {} is new in the map and has no TYPE: it is dropped"};
constexpr LintRow kGenericLost = {
    "generic-without-map", "{} {} reaches no map: maps must be known at the end of its WIZARD_DATA"};
constexpr LintRow kDeclaredTwice = {
    "declared-twice", "{} {} is declared again: {}"};
// clang-format on

constexpr std::string_view kReplacesAndAdds =
    "its attributes replace those of the first, its rules are added";
constexpr std::string_view kReplacesValue = "its value replaces that of the first";
constexpr std::string_view kReplacesDefinition = "its definition replaces that of the first";
constexpr std::string_view kAddsToFirst =
    "its attributes replace those of the first, the rest is added";

struct Declared {
    Context context;
    std::string_view type;
    const Document* document;
    const DocumentElement* element;
};

using Names = std::map<std::string_view, Declared>;

std::string_view noun_of(const Declared& declared) {
    switch (declared.context) {
        case Context::kPort:
            return "port";
        case Context::kHiddenParameter:
            return "hidden parameter";
        case Context::kMacro:
            return "macro";
        default:
            return "parameter";
    }
}

bool is_known_type(Context context, std::string_view type) {
    return context == Context::kPort
               ? type == "BIDIR" || type == "BURIED" || type == "INPUT" || type == "OUTPUT"
               : type == "INTEGER" || type == "STRING";
}

// Follows the declarations as the library reads them.
class Declarations {
public:
    explicit Declarations(Lint& lint) : lint_(lint) {}

    void pass(const Spot& spot) {
        const std::string_view name = spot.element.value_of("NAME");
        switch (spot.context) {
            case Context::kParameter:
            case Context::kPort:
                if (is_in(spot, "WIZARD_MAP")) {
                    pass_mapped(spot, name, *map_);
                } else if (is_in(spot, "WIZARD_DATA")) {
                    pass_mapped(spot, name, generic_);
                    generics_.push_back(spot);
                } else {
                    pass_object(spot, name);
                }
                break;
            case Context::kHiddenParameter:
                declare(objects_, spot, name, kReplacesValue);
                break;
            case Context::kMacro:
                declare(objects_, spot, name, kReplacesDefinition);
                break;
            case Context::kVector:
                declare(vectors_, spot, name, kAddsToFirst);
                break;
            case Context::kWizardData:
                end_wizard_data();
                break;
            case Context::kWizardMap:
                pass_map(spot, name);
                break;
            case Context::kRoot:
                end_wizard_data();
                break;
            default:
                break;
        }
    }

    // Between two sections, and in the end: generic parts are given to the maps known by now.
    void end_wizard_data() {
        for (auto& [name, parts] : parts_of_maps_) {
            parts.insert(generic_.begin(), generic_.end());
        }
        if (parts_of_maps_.empty()) {
            for (const Spot& spot : generics_) {
                lint_.post(kGenericLost, spot.element, spot.document.place(spot.element),
                           spot.element.tag, quoted(spot.element.value_of("NAME")));
            }
        }
        generic_.clear();
        generics_.clear();
    }

private:
    static bool is_in(const Spot& spot, std::string_view tag) {
        return spot.element.parent->tag == tag;
    }

    static Declared declared_by(const Spot& spot) {
        return {spot.context, spot.element.value_of("TYPE"), &spot.document, &spot.element};
    }

    void declare(Names& names, const Spot& spot, std::string_view name,
                 std::string_view consequence) {
        if (name.empty()) {
            return;
        }
        const auto [found, is_new] = names.try_emplace(name, declared_by(spot));
        const Declared& first = found->second;
        const bool is_same =
            first.context == spot.context && first.type == spot.element.value_of("TYPE");
        // Another type is refused, and told of.
        if (!is_new && is_same) {
            Finding& finding =
                lint_.post(kDeclaredTwice, spot.element, spot.document.place(spot.element),
                           spot.element.tag, quoted(name), consequence);
            finding.notes.push_back({"first declared here", first.document->place(*first.element)});
        }
    }

    // Without TYPE it adds to what is declared already.
    void pass_object(const Spot& spot, std::string_view name) {
        const DocumentAttribute* const type = spot.element.attribute("TYPE");
        if (type != nullptr) {
            if (is_known_type(spot.context, type->value.text)) {
                declare(objects_, spot, name, kReplacesAndAdds);
            }
            return;
        }
        const auto found = objects_.find(name);
        if (found != objects_.end() && found->second.context != spot.context) {
            const Declared& first = found->second;
            Finding& finding =
                lint_.post(kOtherKind, spot.element, spot.document.place(spot.element),
                           spot.element.tag, quoted(name), noun_of(first));
            finding.notes.push_back({"declared here", first.document->place(*first.element)});
        }
    }

    // A map takes the first type, and says nothing of another one.
    void pass_mapped(const Spot& spot, std::string_view name, Names& names) {
        if (name.empty()) {
            return;
        }
        const DocumentAttribute* const type = spot.element.attribute("TYPE");
        const auto found = names.find(name);
        if (found != names.end()) {
            Finding& finding =
                lint_.post(kDeclaredTwice, spot.element, spot.document.place(spot.element),
                           spot.element.tag, quoted(name), kReplacesAndAdds);
            const Declared& first = found->second;
            finding.notes.push_back({"first declared here", first.document->place(*first.element)});
        } else if (type == nullptr) {
            lint_.post(kTypeMissing, spot.element, spot.document.place(spot.element),
                       spot.element.tag, quoted(name));
        } else if (is_known_type(spot.context, type->value.text)) {
            names.emplace(name, declared_by(spot));
        }
    }

    void pass_map(const Spot& spot, std::string_view name) {
        map_ = &nameless_;
        if (!name.empty()) {
            declare(maps_, spot, name, kAddsToFirst);
            map_ = &parts_of_maps_[name];
        }
    }

    Lint& lint_;
    Names objects_;
    Names vectors_;
    Names maps_;
    std::map<std::string_view, Names> parts_of_maps_;
    Names generic_;
    std::vector<Spot> generics_;
    Names nameless_;
    Names* map_ = &nameless_;
};

}  // namespace

void find_misplaced_declarations(Lint& lint) {
    Declarations declarations(lint);
    lint.for_each([&declarations](const Spot& spot) { declarations.pass(spot); });
    declarations.end_wizard_data();
}
