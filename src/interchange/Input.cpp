// SPDX-License-Identifier: Apache-2.0
#include "interchange/Input.h"

#include "interchange/Document.h"
#include "interchange/Format.h"
#include "interchange/SourceText.h"
#include "interchange/Wording.h"

namespace qor::interchange {
namespace {

constexpr std::size_t kBeginning = std::size_t{1} << 16;
constexpr std::size_t kStep = std::size_t{1} << 20;

// The last step brought a zero byte, or ends in the midst of a line or text that is too long already.
bool isHopeless(std::string_view text, TextForm form, std::size_t step) {
    if (text.find('\0', text.size() - step) != std::string_view::npos) return true;
    const std::size_t mark = text.rfind(stretchEnd(form));
    return text.size() - (mark == std::string_view::npos ? 0 : mark) > kMaxStretch + 1;
}

Input openAnew(const std::string& path) {
    Input input;
    input.file = FileSource::open(path, input.problem);
    if (input.file && !readMore(*input.file, kBeginning, input.text)) input.problem = input.file->problem();
    return input;
}

}  // namespace

bool Input::readAll() {
    if (!file || !problem.empty()) return problem.empty();
    const std::string tooLarge = concat({"the file is larger than ", std::to_string(kMaxDocument >> 20),
                                         " MiB; its models can be parted over several files"});
    if (file->size() > kMaxDocument) {
        problem = tooLarge;
        return false;
    }
    text.reserve(file->size() + kStep);
    const TextForm form = notationOf(text) == Notation::Json ? TextForm::Json : TextForm::Yaml;
    bool hopeless = isHopeless(text, form, text.size());
    while (!hopeless && problem.empty()) {
        const std::size_t before = text.size();
        if (!readMore(*file, kStep, text)) problem = file->problem();
        if (text.size() == before) break;
        if (text.size() > kMaxDocument) problem = tooLarge;
        hopeless = isHopeless(text, form, text.size() - before);
    }
    return problem.empty();
}

Input Inputs::open(const std::string& path) {
    if (const auto taken = _taken.extract(path)) {
        Input input;
        input.text = std::move(taken.mapped());
        return input;
    }
    return openAnew(path);
}

Input Inputs::look(const std::string& path) {
    if (const auto taken = _taken.find(path); taken != _taken.end()) {
        Input input;
        input.text = taken->second;
        return input;
    }
    Input input = openAnew(path);
    if (!input.file || input.file->canBeReadAgain()) return input;
    if (input.readAll()) {
        input.file.reset();
        _taken[path] = input.text;
    }
    return input;
}

}  // namespace qor::interchange
