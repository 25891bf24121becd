#include "standin/delivery.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace standin {
namespace {

const char* const reply = "+OK: done\r\nteluma> ";
const char* const prompt = "teluma> ";

Delivery delivered(FaultKind kind, double amount = 0) {
    return deliver({kind, amount}, reply, prompt);
}

std::string bytes_of(const Delivery& delivery) {
    std::string bytes;
    for (const Piece& piece : delivery.pieces) {
        bytes += piece.bytes;
    }
    return bytes;
}

TEST(Delivery, WithoutAFaultIsTheReplyAtOnce) {
    const Delivery delivery = delivered(FaultKind::none);
    ASSERT_EQ(delivery.pieces.size(), 1U);
    EXPECT_EQ(delivery.pieces[0].bytes, reply);
    EXPECT_EQ(delivery.pieces[0].wait, Clock::duration::zero());
    EXPECT_EQ(delivery.pieces[0].gap, Clock::duration::zero());
    EXPECT_FALSE(delivery.then_close);
}

TEST(Delivery, ClosedOrSilentIsNoByte) {
    EXPECT_EQ(bytes_of(delivered(FaultKind::close)), "");
    EXPECT_TRUE(delivered(FaultKind::close).then_close);
    EXPECT_EQ(bytes_of(delivered(FaultKind::silent)), "");
    EXPECT_FALSE(delivered(FaultKind::silent).then_close);
}

TEST(Delivery, LateOrDribblingIsTheWholeReplyWithWaits) {
    const Delivery late = delivered(FaultKind::late, 1.5);
    EXPECT_EQ(bytes_of(late), reply);
    EXPECT_EQ(late.pieces[0].wait, std::chrono::milliseconds(1500));
    const Delivery dribble = delivered(FaultKind::dribble, 0.25);
    EXPECT_EQ(bytes_of(dribble), reply);
    EXPECT_EQ(dribble.pieces[0].gap, std::chrono::milliseconds(250));
}

TEST(Delivery, OverlongIsALineOfThatLengthBeforeTheReply) {
    EXPECT_EQ(bytes_of(delivered(FaultKind::overlong, 255)),
              std::string(255, 'x') + "\r\n" + reply);
}

TEST(Delivery, GarbageTakesTheReplysPlaceWithAPromptOrWithout) {
    EXPECT_EQ(bytes_of(delivered(FaultKind::garbage, 300)), garbage_bytes(300));
    EXPECT_EQ(bytes_of(delivered(FaultKind::garbage_prompt, 50)),
              garbage_bytes(50) + "\r\nteluma> ");
}

TEST(Delivery, GarbageHasEveryKindOfBadByteButNoEndOfALineOrReply) {
    const std::string garbage = garbage_bytes(300);
    EXPECT_EQ(garbage.size(), 300U);
    EXPECT_EQ(garbage.find_first_of("\r\n>"), std::string::npos);
    EXPECT_NE(garbage.find("\x1b[2J"), std::string::npos);
    EXPECT_NE(garbage.find('\0'), std::string::npos);
    EXPECT_TRUE(std::any_of(garbage.begin(), garbage.end(),
                            [](char byte) { return static_cast<unsigned char>(byte) > 127; }));
    EXPECT_EQ(garbage_bytes(300), garbage);
    EXPECT_EQ(garbage_bytes(5), garbage.substr(0, 5));
    EXPECT_EQ(garbage_bytes(100000).size(), 100000U);
}

TEST(Delivery, OnlyFaultsThatSpoilTheAnswerLetTheCommandBeCarriedOut) {
    for (const FaultKind kind :
         {FaultKind::none, FaultKind::late, FaultKind::dribble, FaultKind::overlong}) {
        EXPECT_TRUE(is_carried_out(kind));
    }
    for (const FaultKind kind : {FaultKind::refuse, FaultKind::close, FaultKind::silent,
                                 FaultKind::garbage, FaultKind::garbage_prompt, FaultKind::crash}) {
        EXPECT_FALSE(is_carried_out(kind));
    }
}

}  // namespace
}  // namespace standin
