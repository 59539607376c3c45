#pragma once
// Icons of the OS Analyze window and of the host toolbar "RTOS".

#include "resources/Icons.h"

namespace kvx::resources {

// clang-format off
inline constexpr IconText kIconRunTime = {
    "................",
    ".k..............",
    ".k.bbbbbbbbbbb..",
    ".k.bbbbbbbbbbb..",
    ".k.bbbbbbbbbbb..",
    ".k..............",
    ".k.bbbbbbb......",
    ".k.bbbbbbb......",
    ".k.bbbbbbb......",
    ".k..............",
    ".k.bbbb.........",
    ".k.bbbb.........",
    ".k.bbbb.........",
    ".k..............",
    ".kkkkkkkkkkkkkk.",
    "................"};

inline constexpr IconText kIconRdyToRun = {
    "................",
    "................",
    "................",
    "................",
    "................",
    "........k...kkk.",
    ".rrrrrr.kk..kkk.",
    ".rrrrrr.kkk.kkk.",
    ".rrrrrr.kkk.kkk.",
    ".rrrrrr.kk..kkk.",
    "........k...kkk.",
    "................",
    "................",
    "................",
    "................",
    "................"};

inline constexpr IconText kIconSystemCall = {
    "................",
    "................",
    ".pppp...........",
    ".pppp.kkkkkkkkk.",
    ".pppp...........",
    "................",
    ".pppp...........",
    ".pppp.kkkkkkkkk.",
    ".pppp...........",
    "................",
    ".pppp...........",
    ".pppp.kkkkkkkkk.",
    ".pppp...........",
    "................",
    "................",
    "................"};

inline constexpr IconText kIconPickUp = {
    "................",
    "................",
    "..pppppppppppp..",
    "...pppppppppp...",
    "....pppppppp....",
    ".....pppppp.....",
    "......pppp......",
    ".......pp.......",
    ".......pp.......",
    ".......pp.......",
    ".......pp.......",
    ".......pp.......",
    ".......pp.......",
    ".......pp.......",
    "................",
    "................"};

inline constexpr IconText kIconSave = {
    "................",
    "................",
    "..bbwwwwwwwwbb..",
    "..bbwwwwwkkwbb..",
    "..bbwwwwwkkwbb..",
    "..bbwwwwwkkwbb..",
    "..bbwwwwwwwwbb..",
    "..bbbbbbbbbbbb..",
    "..bbbbbbbbbbbb..",
    "..bbwwwwwwwwbb..",
    "..bbwwwwwwwwbb..",
    "..bbwkkkkkkwbb..",
    "..bbwwwwwwwwbb..",
    "..bbwwwwwwwwbb..",
    "................",
    "................"};

inline constexpr IconText kIconOpenOSTrace = {
    "................",
    ".kkkkkkkkkkkkkk.",
    ".kkkkkkkkkkkkkk.",
    ".kkkkkkkkkkkkkk.",
    ".k............k.",
    ".k.bbbbb......k.",
    ".k.bbbbb......k.",
    ".k............k.",
    ".k....ggggg...k.",
    ".k....ggggg...k.",
    ".k............k.",
    ".k.......rrrr.k.",
    ".k.......rrrr.k.",
    ".k............k.",
    ".kkkkkkkkkkkkkk.",
    "................"};

inline constexpr IconText kIconOpenOSAnalyze = {
    "................",
    ".kkkkkkkkkkkkkk.",
    ".kkkkkkkkkkkkkk.",
    ".kkkkkkkkkkkkkk.",
    ".k............k.",
    ".k.bbbbbbbbbb.k.",
    ".k.bbbbbbbbbb.k.",
    ".k............k.",
    ".k.bbbbbbb....k.",
    ".k.bbbbbbb....k.",
    ".k............k.",
    ".k.bbbb.......k.",
    ".k.bbbb.......k.",
    ".k............k.",
    ".kkkkkkkkkkkkkk.",
    "................"};
// clang-format on

}  // namespace kvx::resources
