// The mistakes that the detector learns from: each kind at its place, with its mark, and nowhere else.
#include <gmock/gmock.h>

#include <set>

#include "engine/databuild/detector/mistake_maker.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

using databuild::Mistake;
using databuild::MistakeFinder;
using databuild::MistakeKind;
using K = MistakeKind;

std::string MarkedText(const std::vector<Token>& tokens, const std::set<std::size_t>& wrong) {
  std::string text;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const std::string blank = i > 0 && tokens[i].spaceBefore ? " " : "";
    text += blank + (wrong.contains(i) ? "[" + tokens[i].text + "]" : tokens[i].text);
  }
  return text;
}

std::string TextWith(const Sentence& sentence, const Mistake& mistake) {
  const auto first = static_cast<std::size_t>(mistake.first);
  std::set<std::size_t> wrong;
  for (const int i : mistake.wrong) wrong.insert(first + static_cast<std::size_t>(i));
  for (std::size_t i = 0; mistake.wrong.empty() && i < std::max<std::size_t>(mistake.words.size(), 1); ++i)
    wrong.insert(first + i);
  return MarkedText(databuild::PutIn(sentence.Tokens(), mistake), wrong);
}

std::set<std::string> Made(K kind, const std::string& right) {
  const Sentence sentence = SharedModels().Read(right);
  std::set<std::string> made;
  for (unsigned choice = 0; choice < 40; ++choice) {
    for (const Mistake& mistake : MistakeFinder(sentence, choice).Run()) {
      if (mistake.kind == kind) made.insert(TextWith(sentence, mistake));
    }
  }
  return made;
}

struct MistakeExample {
  K kind;
  const char* right;
  const char* wrong;  // wrong tokens in brackets
};

const std::vector<MistakeExample> kExamples = {
    {K::kAnLost, "She bought a red bike.", "She bought [red] bike."},
    {K::kTheLost, "He is the best player.", "He is [best] player."},
    {K::kAnAdded, "We need information.", "We need [an] information."},
    {K::kTheAdded, "We often play tennis.", "We often play [the] tennis."},
    {K::kWrongAn, "She ate an apple.", "She ate [a] apple."},
    {K::kAnForThe, "It was the same man.", "It was [a] same man."},
    {K::kArticleBesidePossessive, "This is my book.", "This is [the] my book."},
    {K::kArticleMisplaced, "It was such a day.", "It was [a] such day."},
    {K::kPluralLostAfterQuantity, "She has three cats.", "She has three [cat]."},
    {K::kPluralLost, "They sell computers.", "They sell [computer]."},
    {K::kOneOfSingular, "He is one of my friends.", "He is one of my [friend]."},
    {K::kPluralAfterOne, "Every student came.", "Every [students] came."},
    {K::kPluralOfMass, "We need information.", "We need [informations]."},
    {K::kWrongDemonstrative, "I like these songs.", "I like [this] songs."},
    {K::kWrongQuantity, "He has many friends.", "He has [much] friends."},
    {K::kThirdLost, "He likes music.", "He [like] music."},
    {K::kThirdAdded, "They like music.", "They [likes] music."},
    {K::kWrongBe, "They are here.", "They [is] here."},
    {K::kWrongHave, "She has a dog.", "She [have] a dog."},
    {K::kWrongDo, "He does not know.", "He [do] not know."},
    {K::kBaseAfterPreposition, "Thank you for helping us.", "Thank you for [help] us."},
    {K::kInfinitiveForIng, "I enjoy reading books.", "I enjoy [to] [read] books."},
    {K::kIngForInfinitive, "He decided to leave.", "He decided [leaving]."},
    {K::kToLost, "She wants to sing.", "She wants [sing]."},
    {K::kToAddedAfterModal, "You should go now.", "You should [to] go now."},
    {K::kToAddedAfterCausative, "My mother made me clean it.", "My mother made me [to] clean it."},
    {K::kFiniteAfterModal, "He can swim.", "He can [swims]."},
    {K::kIngAfterModal, "He can swim.", "He can [swimming]."},
    {K::kFiniteAfterDo, "She did not see it.", "She did not [saw] it."},
    {K::kFiniteAfterTo, "He came to see us.", "He came to [saw] us."},
    {K::kIngAfterTo, "He came to see us.", "He came to [seeing] us."},
    {K::kPastAfterHave, "I have eaten it.", "I have [ate] it."},
    {K::kBaseAfterHave, "She has finished it.", "She has [finish] it."},
    {K::kBaseInProgressive, "They are playing outside.", "They are [play] outside."},
    {K::kBaseInPassive, "It was built in May.", "It was [build] in May."},
    {K::kPastInPassive, "It was taken away.", "It was [took] away."},
    {K::kBaseAsSubject, "Writing letters takes time.", "[Write] letters takes time."},
    {K::kForBeforeInfinitive, "He went to buy it.", "He went [for] to buy it."},
    {K::kBaseForParticiple, "I saw a letter written by him.", "I saw a letter [write] by him."},
    {K::kOtherFormAfterAnd, "He sat down and opened the book.", "He sat down and [opens] the book."},
    {K::kUsedTo, "I used to live here.", "I used to [living] here."},
    {K::kPresentWithPastTime, "I saw him yesterday.", "I [see] him yesterday."},
    {K::kPerfectWithPastTime, "I saw him yesterday.", "I [have] seen him yesterday."},
    {K::kPresentBesidePast, "He came in when she left.", "He [comes] in when she left."},
    {K::kNoPerfectWithSince, "I have lived here since 1990.", "I [live] here since 1990."},
    {K::kWillAfterIf, "If it rains, we will stay.", "If it [will] rain, we will stay."},
    {K::kWillInUnreal, "If I had money, I would buy it.", "If I had money, I [will] buy it."},
    {K::kBeLost, "My sister is afraid of dogs.", "My sister [afraid] of dogs."},
    {K::kBeBeforeVerb, "I agree with you.", "I [am] agree with you."},
    {K::kBeBeforePast, "It happened last week.", "It [was] happened last week."},
    {K::kBeForDo, "I do not know it.", "I [am] not know it."},
    {K::kDoLostInNegation, "I do not like it.", "I [not] like it."},
    {K::kBeLostAfterModal, "She will be happy.", "She will [happy]."},
    {K::kBeenLost, "It has been raining.", "It has [raining]."},
    {K::kHaveForThereIs, "There are two dogs.", "There [have] two dogs."},
    {K::kHaveLost, "She has been there.", "She [been] there."},
    {K::kNoInversion, "Why are you late?", "Why [you] are late?"},
    {K::kDoLostInQuestion, "Where do you live?", "Where [you] live?"},
    {K::kDoubleInversion, "What is this thing called?", "What is this thing [is] called?"},
    {K::kBeForDoInQuestion, "Did Tom say it?", "[Was] Tom say it?"},
    {K::kInvertedClause, "I know what it is.", "I know what [is] it."},
    {K::kWrongPreposition, "He is interested in music.", "He is interested [for] music."},
    {K::kPrepositionLost, "She lives in a house.", "She lives [a] house."},
    {K::kPrepositionLostAfterVerb, "I listen to the radio.", "I listen [the] radio."},
    {K::kPrepositionAfterVerb, "We discussed the plan.", "We discussed [about] the plan."},
    {K::kPrepositionBeforeTime, "I will go tomorrow.", "I will go [in] tomorrow."},
    {K::kPrepositionBeforePlace, "He went home.", "He went [to] home."},
    {K::kWrongTimePreposition, "We met on Monday.", "We met [in] Monday."},
    {K::kSinceForFor, "He waited for two hours.", "He waited [since] two hours."},
    {K::kParticleLost, "He gave up.", "He gave[.]"},
    {K::kWhileForDuring, "He slept during the class.", "He slept [while] the class."},
    {K::kAdjectiveForAdverb, "He ran quickly.", "He ran [quick]."},
    {K::kAdverbForAdjective, "It was a quick answer.", "It was a [quickly] answer."},
    {K::kIngForEd, "I am interested in it.", "I am [interesting] in it."},
    {K::kGoodForWell, "She sings well.", "She sings [good]."},
    {K::kWrongCase, "He saw them.", "He saw [they]."},
    {K::kWrongPossessive, "This is their house.", "This is [they] house."},
    {K::kSubjectLost, "We stayed because it was late.", "We stayed because [was] late."},
    {K::kObjectLost, "I like it.", "I like[.]"},
    {K::kSubjectTwice, "My brother is tall.", "My brother [he] is tall."},
    {K::kSoundsAlike, "This is their house.", "This is [there] house."},
    {K::kResumptivePronoun, "The film which we saw was long.", "The film which we saw [it] was long."},
    {K::kRelativeLost, "I know a man who lives there.", "I know a man [lives] there."},
    {K::kWrongRelative, "I know a man who lives there.", "I know a man [which] lives there."},
    {K::kWhatForThat, "The film which we saw was long.", "The film [what] we saw was long."},
    {K::kWhichForWhere, "This is the town where he lives.", "This is the town [which] he lives."},
    {K::kButAfterAlthough, "Although it rained, we went out.", "Although it rained, [but] we went out."},
    {K::kSoAfterBecause, "It rained, so we went home.", "[Because] it rained, so we went home."},
    {K::kRunOn, "It rained, and we went home.", "It rained, [we] went home."},
    {K::kConjunctionLost, "It rained, and we went home.", "It rained [we] went home."},
    {K::kWrongConcession, "We went out despite the rain.", "We went out [although] the rain."},
    {K::kBecauseOf, "We stayed because of the rain.", "We stayed because [the] rain."},
    {K::kWrongPartner, "Both Ann and Tim came.", "Both Ann [or] Tim came."},
    {K::kWrongDegreeClause, "He was too tired to eat.", "He was [so] tired to eat."},
    {K::kThatForWhether, "I wonder if he knows.", "I wonder [that] he knows."},
    {K::kAdverbBeforeBe, "He is always late.", "He [always] is late."},
    {K::kAdverbAfterVerb, "She often visits her aunt.", "She visits [often] her aunt."},
    {K::kVeryBeforeVerb, "I like this song.", "I [very] like this song."},
    {K::kTimeInTheMiddle, "I met him yesterday.", "I [yesterday] met him."},
    {K::kEnoughBefore, "He is old enough.", "He is [enough] old."},
    {K::kAdjectiveAfterNoun, "She has a red car.", "She has a [car] [red]."},
    {K::kAdverbBeforeObject, "He speaks English fluently.", "He speaks [fluently] English."},
    {K::kParticleBeforePronoun, "Please check them out.", "Please check out [them]."},
    {K::kNeighboursSwapped, "She wants to see it.", "She wants [see] to it."},
    {K::kMoreTwice, "He is taller than me.", "He is [more] taller than me."},
    {K::kMoreForEr, "He is taller than me.", "He is [more] tall than me."},
    {K::kPositiveBeforeThan, "He is taller than me.", "He is [tall] than me."},
    {K::kMostTwice, "It is the tallest tree.", "It is the [most] tallest tree."},
    {K::kWrongThan, "He is taller than me.", "He is taller [then] me."},
    {K::kWrongAsAs, "She is as tall as me.", "She is as tall [than] me."},
    {K::kVeryComparative, "He is much taller.", "He is [very] taller."},
    {K::kConfused, "He said hello.", "He [told] hello."},
    {K::kConfusedDegree, "It was such a day.", "It was [so] a day."},
    {K::kNounForAdjective, "Tom was very angry.", "Tom was very [anger]."},
    {K::kAdjectiveForNoun, "Beauty is in the difference.", "Beauty is in the [different]."},
    {K::kVerbForNoun, "He made a decision.", "He made a [decide]."},
    {K::kNounForVerb, "He wants to speak.", "He wants to [speech]."},
    {K::kFiniteForModifier, "The girl sitting beside me is tall.", "The girl [sits] beside me is tall."},
};

TEST(Mistakes, EveryKindIsMadeAndMarkedAtItsPlace) {
  std::set<K> covered;
  for (const auto& [kind, right, wrong] : kExamples) {
    EXPECT_THAT(Made(kind, right), ::testing::Contains(wrong));
    covered.insert(kind);
  }
  EXPECT_EQ(covered.size(), static_cast<std::size_t>(databuild::kMistakeKindCount));
}

TEST(Mistakes, AreNotMadeWhereTheSentenceWouldStayRight) {
  const std::vector<std::pair<K, const char*>> kTable = {
      {K::kAnAdded, "She bought a red bike."},
      {K::kTheAdded, "The book is on the table."},
      {K::kPluralLost, "We go to schools."},
      {K::kPresentBesidePast, "He was tired."},
      {K::kNoPerfectWithSince, "I have seen it."},
      {K::kDoLostInQuestion, "Do you know?"},
      {K::kRunOn, "It rained in May."},
      {K::kPerfectWithPastTime, "He saw it."},
      {K::kWillAfterIf, "If you mix them, it burns."},
      {K::kInvertedClause, "What is it?"},
      {K::kBeBeforePast, "They built it."},
      {K::kWrongCase, "You came."},
  };
  for (const auto& [kind, right] : kTable) EXPECT_THAT(Made(kind, right), ::testing::IsEmpty()) << right;
}

TEST(Mistakes, LabelsStayWithTheirTokensWhenThereAreSeveral) {
  const auto& models = SharedModels();
  databuild::MistakeMaker maker(models.lexicon, models.tagger, models.ngrams, 5);
  int several = 0;
  for (int times = 0; times < 200; ++times) {
    auto tokens = Tokenize("She has three brothers who live in a small town because it is quiet.");
    models.tagger.TagAll(tokens);
    const auto right = tokens;
    const auto made = maker.MakeSo(std::move(tokens), 3);
    ASSERT_EQ(made.tokens.size(), made.labels.size());
    const auto wrong = std::ranges::count(made.labels, true, &databuild::TokenLabel::wrong);
    EXPECT_GT(wrong, 0);
    several += wrong > 1 ? 1 : 0;
    const bool differs = !std::ranges::equal(made.tokens, right, {}, &Token::text, &Token::text);
    EXPECT_TRUE(differs);
    EXPECT_TRUE(made.tokens[0].IsCapitalised());
  }
  EXPECT_GT(several, 100);
}

}  // namespace
}  // namespace tolvex::test
