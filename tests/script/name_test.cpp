// Names and the texts that stand as keys.

#include "script/name.h"
#include "script/ostrel_script.h"

#include <gtest/gtest.h>
#include <string>

TEST(TextPool, TextsThatReadTheSameAreOne) {
    TextPool pool;
    const Ref<ScriptText> first = pool.intern("key");
    EXPECT_EQ(pool.intern("key"), first);
    EXPECT_FALSE(pool.intern("other") == first);
    EXPECT_EQ(first->text, "key");
}

TEST(TextPool, LongTextsAreNotShared) {
    TextPool pool;
    const std::string longest(64, 'a');
    EXPECT_EQ(pool.intern(longest), pool.intern(longest));
    const std::string longer(65, 'a');
    EXPECT_FALSE(pool.intern(longer) == pool.intern(longer));
}

TEST(TextPool, WhatSomebodyHoldsOutlivesEverySweep) {
    TextPool pool;
    const Ref<ScriptText> held = pool.intern("held");
    for (int i = 0; i < 10000; ++i) pool.intern("text " + std::to_string(i));
    EXPECT_EQ(pool.intern("held"), held);
    EXPECT_EQ(held.useCount(), 2U); // this one and the pool's
}

TEST(NameTable, ANamesKeyIsTheTextOfALiteralThatReadsTheSame) {
    NameTable names;
    EXPECT_EQ(names.intern("mass")->key, names.texts().intern("mass"));
}

TEST(BoundArguments, WaitWhileACoroutineTakesItsTurn) {
    OstrelScript engine;
    engine.runScript("count = 0\n"
                     "decay function tick()\ncount += 1\ncount += 1\ncount += 1\ncount += 1\nend\n"
                     "function inner(x)\ny = x\ny = y\nreturn y\nend\n"
                     "function outer(a, b)\nreturn a * 10 + b\nend\n"
                     "tick()\n"
                     "result = outer(inner(1), inner(2))");
    EXPECT_EQ(engine.pullVariable("result").toString(), "12");
    EXPECT_EQ(engine.pullVariable("a").toString(), "not");
    EXPECT_GT(engine.pullVariable("count").asInt(), 2);
}
