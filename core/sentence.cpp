#include "core/sentence.h"

#include <functional>

#include "core/text_scan.h"

namespace orvane {

std::unique_ptr<NodePool> Sentence::DropTree() {
    root.children = {};
    root.staged = Value();
    return std::move(nodes);
}

std::string_view SentenceList::KeepSheet(std::string_view text) {
    sheet.assign(text.begin(), text.end());
    texts = std::make_unique_for_overwrite<char[]>(text.size() + 1);
    return {sheet.data(), sheet.size()};
}

EditBuffer SentenceList::WorkingText(std::string_view cut) {
    // A long text outgrows its room, which would be kept for nothing.
    constexpr std::size_t longestLent = 1024;
    constexpr std::less_equal<const char*> isUpTo;
    const bool isKept = !sheet.empty() && isUpTo(sheet.data(), cut.data()) &&
                        isUpTo(cut.data() + cut.size(), sheet.data() + sheet.size());
    if (!isKept || cut.size() > longestLent) return EditBuffer(cut);
    char* const room = texts.get() + (cut.data() - sheet.data());
    cut.copy(room, cut.size());
    return EditBuffer(room, cut.size());
}

void SentenceList::Add(std::string_view cut) {
    // A short sheet shall take little, and a large one few blocks.
    constexpr std::size_t smallBlock = 16;
    constexpr std::size_t largeBlock = 256;
    if (blocks.empty() || blocks.back().size() == blocks.back().capacity()) {
        const std::size_t size = blocks.empty() ? smallBlock : largeBlock;
        blocks.emplace_back().reserve(size);
    }
    sentences.push_back(&blocks.back().emplace_back(cut, WorkingText(cut)));
}

void SentenceList::RemoveBlank() {
    std::erase_if(sentences, [](const Sentence* sentence) {
        return SkipWhite(sentence->source, 0) == sentence->source.size();
    });
}

void SentenceList::KeepFirst(int count) {
    sentences.resize(static_cast<std::size_t>(count));
    if (count == 0) blocks.clear();
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
