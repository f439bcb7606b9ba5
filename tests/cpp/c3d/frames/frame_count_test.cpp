#include "plugins/c3d/frames/frame_count.hpp"

#include <gtest/gtest.h>

namespace {

using c3d::count_reliability;
using c3d::frame_claims;
using c3d::frame_room;

/// Room for `frames` frames of 880 bytes, padded as a file is.
frame_room room_for(std::uint64_t frames) { return {(frames * 880 + 511) / 512 * 512, 880, 0}; }

frame_claims claims_of_header(std::uint16_t first, std::uint16_t last) {
    frame_claims claims;
    claims.header_first = first;
    claims.header_last = last;
    return claims;
}

std::uint64_t frames_of(const frame_claims& claims, const frame_room& room, std::size_t notes = 0) {
    schema::warnings found;
    const auto frames = c3d::reconciled_frames(claims, room, found);
    EXPECT_EQ(found.texts().size(), notes);
    return frames;
}

TEST(FrameCount, LongFramesComeFirst) {
    auto claims = claims_of_header(1, 65535);
    claims.long_frames = 80000;
    claims.real_frames = 70000;
    claims.trial_first = 1;
    claims.trial_last = 60000;
    EXPECT_EQ(c3d::claimed_frames(claims)->frames, 80000U);
}

TEST(FrameCount, RealFramesComeBeforeTheTrial) {
    auto claims = claims_of_header(1, 65535);
    claims.real_frames = 70000;
    claims.trial_first = 1;
    claims.trial_last = 60000;
    EXPECT_EQ(c3d::claimed_frames(claims)->frames, 70000U);
}

TEST(FrameCount, WordComesBeforeAStaleTrial) {
    auto claims = claims_of_header(1, 200);
    claims.word_frames = 100;
    claims.trial_first = 1;
    claims.trial_last = 200;
    EXPECT_EQ(c3d::claimed_frames(claims)->frames, 100U);
}

TEST(FrameCount, TrialComesBeforeASaturatedWord) {
    auto claims = claims_of_header(1, 65535);
    claims.word_frames = 65535;
    claims.trial_first = 233;
    claims.trial_last = 79589;
    EXPECT_EQ(c3d::claimed_frames(claims)->frames, 79357U);
}

TEST(FrameCount, HeaderServesWithoutParameters) {
    EXPECT_EQ(c3d::claimed_frames(claims_of_header(1, 701))->frames, 701U);
    EXPECT_EQ(c3d::claimed_frames(claims_of_header(33, 184))->frames, 152U);
}

TEST(FrameCount, HeaderServesWhereFramesAreZero) {
    auto claims = claims_of_header(1, 450);
    claims.word_frames = 0;
    EXPECT_EQ(c3d::claimed_frames(claims)->frames, 450U);
}

TEST(FrameCount, HeaderRangeFromZeroHasOneMore) {
    EXPECT_EQ(c3d::claimed_frames(claims_of_header(0, 99))->frames, 100U);
}

TEST(FrameCount, NobodyMaySayIt) {
    EXPECT_FALSE(c3d::claimed_frames(claims_of_header(5, 1)).has_value());
    EXPECT_FALSE(c3d::claimed_frames(claims_of_header(0, 0)).has_value());
    EXPECT_EQ(frames_of(claims_of_header(5, 1), room_for(77), 1), 77U);
}

TEST(FrameCount, PaddingIsNoFrame) {
    auto claims = claims_of_header(1, 3);
    claims.word_frames = 3;
    EXPECT_EQ(frames_of(claims, {3 * 100 + 511, 100, 0}), 3U);
}

TEST(FrameCount, CutFileHasTheFramesThatAreThere) {
    auto claims = claims_of_header(1, 1149);
    claims.word_frames = 1149;
    EXPECT_EQ(frames_of(claims, {29 * 880 + 400, 880, 0}, 1), 29U);
}

TEST(FrameCount, WrappedWordIsUnwrappedByTheLength) {
    auto claims = claims_of_header(1, 65535);
    claims.word_frames = 70000 - 65536;
    EXPECT_EQ(frames_of(claims, room_for(70000), 1), 70000U);
    EXPECT_EQ(frames_of(claims, room_for(70000 + 2 * 65536), 1), 70000U + 2 * 65536);
}

TEST(FrameCount, SaturatedWordIsOutdoneByTheLength) {
    auto claims = claims_of_header(1, 65535);
    claims.word_frames = 65535;
    EXPECT_EQ(frames_of(claims, room_for(70001), 1), 70001U);
    EXPECT_EQ(frames_of(claims, room_for(65535)), 65535U);
}

TEST(FrameCount, SaturatedHeaderIsOutdoneByTheLength) {
    EXPECT_EQ(frames_of(claims_of_header(1, 65535), room_for(70001), 1), 70001U);
}

TEST(FrameCount, PaddingIsNoFrameWhereTheLengthCounts) {
    auto claims = claims_of_header(1, 65535);
    claims.word_frames = 65535;
    const std::uint64_t padding = (512 - 70001 * 8 % 512) % 512;
    EXPECT_EQ(frames_of(claims, {70001 * 8 + padding, 8, padding}, 1), 70001U);
    // Zeros with which the last frame ends belong to it.
    EXPECT_EQ(frames_of(claims, {70001 * 8 + padding, 8, padding + 3}, 1), 70001U);
    EXPECT_EQ(frames_of(claims_of_header(5, 1), {77 * 8 + 24, 8, 24}, 1), 77U);
}

TEST(FrameCount, PrivateDataBehindTheFramesAreNotFrames) {
    auto claims = claims_of_header(1, 100);
    claims.word_frames = 100;
    EXPECT_EQ(frames_of(claims, room_for(130), 1), 100U);
}

TEST(FrameCount, SourceThatFillsTheFileWins) {
    auto claims = claims_of_header(1, 100);
    claims.word_frames = 100;
    claims.trial_first = 1;
    claims.trial_last = 130;
    EXPECT_EQ(frames_of(claims, room_for(130), 1), 130U);
}

TEST(FrameCount, FirstFrameIsTheHeaders) {
    EXPECT_EQ(c3d::first_frame_number(claims_of_header(33, 184), 152), 33U);
}

TEST(FrameCount, FirstFrameOfAWriterThatCountsFromZeroIsOne) {
    EXPECT_EQ(c3d::first_frame_number(claims_of_header(0, 99), 100), 1U);
}

TEST(FrameCount, FirstFrameIsTheTrialsWhereTheHeaderHasNoRoom) {
    auto claims = claims_of_header(1, 65535);
    claims.trial_first = 233;
    claims.trial_last = 79589;
    EXPECT_EQ(c3d::first_frame_number(claims, 79357), 233U);
}

TEST(FrameCount, FirstFrameOfAStaleTrialIsNot) {
    auto claims = claims_of_header(50, 149);
    claims.trial_first = 1;
    claims.trial_last = 200;
    EXPECT_EQ(c3d::first_frame_number(claims, 100), 50U);
}

} // namespace
