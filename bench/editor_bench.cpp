#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "editor/text_lines.h"
#include "editor/undo_list.h"

// The editor's text at sizes that nobody types: what one keystroke, one undo and one opened sheet
// cost.

namespace orvane::bench {
namespace {

std::string TextOfLines(std::int64_t lines, std::size_t length) {
    std::string line(length, 'x');
    line += '\n';
    std::string text;
    text.reserve(static_cast<std::size_t>(lines) * line.size());
    for (std::int64_t index = 0; index < lines; ++index) text += line;
    return text;
}

// What one operation takes, where an iteration does many.
benchmark::Counter PerOperation(double operations) {
    return {operations,
            benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert};
}

// Lines of 40 characters, a sheet's usual ones.
void Load(TextLines& text, const benchmark::State& state) {
    text.SetText(TextOfLines(state.range(0), 40));
}

void TypeAtFront(benchmark::State& state) {
    TextLines text;
    UndoList list;
    Load(text, state);
    for (auto _ : state) {
        text.InsertChar(0, 0, 'x');
        list.AddInsertChar({0, 0}, 'x');
    }
}

// As many typed characters as the list holds at most.
constexpr int heldSteps = UndoList::trimAt - 1;

void Fill(TextLines& text, UndoList& list, char ch) {
    for (int step = 0; step < heldSteps; ++step) {
        if (ch == '\n') {
            text.SplitLine(0, 0);
        } else {
            text.InsertChar(0, 0, ch);
        }
        list.AddInsertChar({0, 0}, ch);
    }
}

void UndoAll(TextLines& text, UndoList& list) {
    while (list.Undo(text).done) {
    }
}

void RedoAll(TextLines& text, UndoList& list) {
    while (list.Redo(text).done) {
    }
}

void UndoTyped(benchmark::State& state, char ch) {
    TextLines text;
    UndoList list;
    Load(text, state);
    Fill(text, list, ch);
    for (auto _ : state) {
        UndoAll(text, list);
        state.PauseTiming();
        RedoAll(text, list);
        state.ResumeTiming();
    }
    state.counters["each"] = PerOperation(heldSteps);
}

void RedoTyped(benchmark::State& state, char ch) {
    TextLines text;
    UndoList list;
    Load(text, state);
    Fill(text, list, ch);
    for (auto _ : state) {
        state.PauseTiming();
        UndoAll(text, list);
        state.ResumeTiming();
        RedoAll(text, list);
    }
    state.counters["each"] = PerOperation(heldSteps);
}

void EnterAtFront(benchmark::State& state) {
    TextLines text;
    UndoList list;
    Load(text, state);
    for (auto _ : state) {
        text.SplitLine(0, 0);
        list.AddInsertChar({0, 0}, '\n');
    }
}

// As many lines as the sheet has pasted at its front, and taken back.
void PasteAndUndo(benchmark::State& state) {
    TextLines text;
    Load(text, state);
    std::string pasted;
    text.AppendTextTo(pasted);
    for (auto _ : state) {
        UndoList list;
        TextPosition end;
        std::int32_t linesAdded = 0;
        text.InsertText(0, 0, pasted, end, linesAdded);
        list.AddReplace({0, 0}, {}, pasted);
        benchmark::DoNotOptimize(list.Undo(text));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr std::int64_t largeText = 50'000'000;

std::string LargeText(const benchmark::State& state, std::string_view lineEnd) {
    std::string line(static_cast<std::size_t>(state.range(0)) - lineEnd.size(), 'x');
    line.append(lineEnd);
    std::string text;
    text.reserve(largeText);
    while (text.size() < largeText) text += line;
    return text;
}

// Opening a sheet in an editor that holds one of the same size.
void SetLargeText(benchmark::State& state, const char* lineEnd) {
    const std::string content = LargeText(state, lineEnd);
    TextLines text;
    for (auto _ : state) text.SetText(content);
    state.SetBytesProcessed(state.iterations() * largeText);
}

// What the allocations alone cost: the same lines made without any text and dropped again.
void AllocateLines(benchmark::State& state) {
    const auto lines = static_cast<std::size_t>(largeText / state.range(0));
    const auto bytes = static_cast<std::size_t>(state.range(0));
    std::vector<std::unique_ptr<TextLine>> made(lines);
    for (auto _ : state) {
        for (auto& line : made) line.reset();
        for (auto& line : made) {
            line = std::make_unique<TextLine>();
            line->chars = std::make_unique_for_overwrite<char[]>(bytes);
        }
    }
}

void GetLargeText(benchmark::State& state) {
    TextLines text;
    text.SetText(LargeText(state, "\n"));
    for (auto _ : state) {
        std::string content;
        text.AppendTextTo(content);
        benchmark::DoNotOptimize(content.data());
    }
    state.SetBytesProcessed(state.iterations() * largeText);
}

BENCHMARK(TypeAtFront)->Arg(100'000)->Iterations(10'000);
// 51 rounds of 199 steps: 10,149 of each.
BENCHMARK_CAPTURE(UndoTyped, character, 'x')->Arg(100'000)->Iterations(51);
BENCHMARK_CAPTURE(RedoTyped, character, 'x')->Arg(100'000)->Iterations(51);
BENCHMARK_CAPTURE(UndoTyped, enter, '\n')->Arg(100'000)->Iterations(51);
BENCHMARK_CAPTURE(RedoTyped, enter, '\n')->Arg(100'000)->Iterations(51);
BENCHMARK(EnterAtFront)->Arg(100'000)->Iterations(10'000);
BENCHMARK(PasteAndUndo)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SetLargeText, lf, "\n")->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SetLargeText, crlf, "\r\n")->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(AllocateLines)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(GetLargeText)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
