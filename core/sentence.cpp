#include "core/sentence.h"

#include "core/text_scan.h"

namespace orvane {

void Sentence::DropTree() {
    root.children = {};
    root.staged = Value();
    nodes = NodePool();
}

void SentenceList::RemoveBlank() {
    std::erase_if(sentences, [](const std::unique_ptr<Sentence>& sentence) {
        return SkipWhite(sentence->source, 0) == sentence->source.size();
    });
}

void SentenceList::KeepFirst(int count) {
    sentences.resize(static_cast<std::size_t>(count));
    IndexNames();
}

void SentenceList::IndexNames() {
    hasNamedDefines = false;
    names.Read(Count(), [this](int index) {
        const Sentence& sentence = (*this)[index];
        if (!sentence.name.empty() && sentence.IsDefine()) hasNamedDefines = true;
        return std::string_view(sentence.name);
    });
}

int SentenceList::FirstOf(std::string_view name, bool (Sentence::*isOfKind)() const) const {
    int index = names.First(name, [this](int at) { return NameAt(at); });
    while (index >= 0 && !((*this)[index].*isOfKind)()) index = names.Next(index);
    return index;
}

}  // namespace orvane
