// Code templates and code texts from outside: Format accepts or refuses a template as the
// documented syntax does and keeps the same names, GetString renders the literals and values
// in template order, Set(text) assigns the values the documented matching gives, and copies,
// assignments and Set(other) keep every code sound (each owns its template).
#include "CZRB_Code.h"
#include "FuzzSupport.h"

#include <vector>

namespace {

// Names compare as strings do: up to the first zero byte.
std::size_t FindName(const std::vector<std::string>& names, const std::string& name) {
    std::size_t i = 0;
    while (i < names.size() && std::strcmp(names[i].c_str(), name.c_str()) != 0) {
        ++i;
    }
    return i;
}

// A template as the syntax reads it: field nodes hold an index, literal nodes their text.
struct Template {
    struct Node {
        bool isField;
        std::size_t field;
        std::string text;
    };
    bool accepted = true;
    std::vector<std::string> names;
    std::vector<Node> nodes;
};

Template ModelFormat(const std::string& text) {
    Template model;
    std::string work;
    bool inField = false, justClosed = false;
    for (const char c : text) {
        if (!inField && c != '<') {
            work += c;
            justClosed = false;
        } else if (!inField) {
            if (justClosed) {
                return Template{false, {}, {}};
            }
            if (!work.empty()) {
                model.nodes.push_back({false, 0, work});
            }
            work.clear();
            inField = true;
        } else if (c != '>') {
            work += c;
        } else {
            if (work.empty() || FindName(model.names, work) < model.names.size()) {
                return Template{false, {}, {}};
            }
            model.nodes.push_back({true, model.names.size(), std::string()});
            model.names.push_back(work);
            work.clear();
            inField = false;
            justClosed = true;
        }
    }
    if (model.nodes.empty()) {
        model.names.clear();
    }
    return model;
}

std::string ModelRender(const Template& model, const std::vector<std::string>& values) {
    std::string text;
    for (const auto& node : model.nodes) {
        text += node.isField ? values[node.field] : node.text;
    }
    return text;
}

void ModelSet(const Template& model, std::string work, std::vector<std::string>& values) {
    bool pending = false;
    std::size_t counter = 0;
    for (const auto& node : model.nodes) {
        if (node.isField) {
            pending = true;
            continue;
        }
        const std::size_t at = work.find(node.text);
        if (at == std::string::npos) {
            return;
        }
        if (pending) {
            values[counter++] = work.substr(0, at);
            pending = false;
        }
        work.erase(0, at + node.text.size());
    }
    if (pending && !work.empty()) {
        values[counter] = work;
    }
}

// Set(other): each name of other, in order, gives its value to this code's first field of
// that name.
void ModelSetOther(const Template& model, std::vector<std::string>& values,
                   const Template& otherModel, const std::vector<std::string>& otherValues) {
    for (std::size_t j = 0; j < otherModel.names.size(); ++j) {
        const std::size_t i = FindName(model.names, otherModel.names[j]);
        if (i < values.size()) {
            values[i] = otherValues[j];
        }
    }
}

void CheckCode(const CZRB_Code& code, const Template& model,
               const std::vector<std::string>& values) {
    FUZZ_CHECK(code.GetNames().GetLength() == model.names.size());
    FUZZ_CHECK(code.GetValues().GetLength() == model.names.size());
    for (unsigned int i = 0; i < model.names.size(); ++i) {
        FUZZ_CHECK(FromLib(code.GetNames()[i]) == model.names[i]);
        FUZZ_CHECK(FromLib(code.GetValues()[i]) == values[i]);
        const std::size_t first = FindName(model.names, model.names[i]);
        FUZZ_CHECK(FromLib(code.GetField(ToLib(model.names[i]))) == values[first]);
    }
    FUZZ_CHECK(FromLib(code.GetString()) == ModelRender(model, values));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string templateText = input.TakeShortBytes(48);
    const std::string fieldValues = input.TakeShortBytes(48);
    const std::string text = input.TakeRest();

    CZRB_Code code;
    const Template model = ModelFormat(templateText);
    FUZZ_CHECK(code.Format(ToLib(templateText)) == (model.accepted ? 0U : 11U));
    std::vector<std::string> values(model.names.size());
    CheckCode(code, model, values);
    FUZZ_CHECK(FromLib(code.GetField(CZRB_String(">"))) == "(*this)"); // no name holds '>'

    // Values for the fields, cut from the input at every comma.
    std::size_t from = 0;
    for (std::size_t i = 0; i < values.size() && from <= fieldValues.size(); ++i) {
        std::size_t end = fieldValues.find(',', from);
        end = end == std::string::npos ? fieldValues.size() : end;
        const std::string value = fieldValues.substr(from, end - from);
        code.SetField(ToLib(model.names[i]), ToLib(value));
        values[FindName(model.names, model.names[i])] = value;
        from = end + 1;
    }
    CheckCode(code, model, values);

    CZRB_Code parsed(code);
    parsed.Set(ToLib(text));
    std::vector<std::string> parsedValues = values;
    ModelSet(model, text, parsedValues);
    CheckCode(parsed, model, parsedValues);

    // A code rendered and read back into a fresh copy of its template.
    CZRB_Code fresh(ToLib(templateText));
    fresh.Set(code.GetString());
    std::vector<std::string> freshValues(model.names.size());
    ModelSet(model, ModelRender(model, values), freshValues);
    CheckCode(fresh, model, freshValues);

    // Set(other) takes over the values of the names both codes have: all of them here, and
    // those of a template made from the text (whose values are empty).
    fresh = parsed;
    const CZRB_Code& itself = fresh;
    fresh = itself;
    fresh.Set(code);
    ModelSetOther(model, parsedValues, model, values);
    CheckCode(fresh, model, parsedValues);
    const CZRB_Code other(ToLib(text));
    const Template otherModel = ModelFormat(text);
    fresh.Set(other);
    ModelSetOther(model, parsedValues, otherModel,
                  std::vector<std::string>(otherModel.names.size()));
    CheckCode(fresh, model, parsedValues);
    return 0;
}
