// The error model: what each code throws, how it is identified and released.
#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <new>
#include <string>

namespace {

CException* Catch(ERR::CODE code) {
  try {
    ERR::Raise(code);
  } catch (CException* e) {
    return e;
  }
}

struct Counted : CException {
  explicit Counted(int* count) : alive(count) { ++*alive; }
  ~Counted() override { --*alive; }
  int* alive;
};

template <class Thrown>
ERR::CODE Cleared(Thrown thrown) {
  try {
    throw thrown;
  } catch (...) {
    return ERR::Clear();
  }
}

TEST(Error, RaiseThrowsThePointerThatStandsForTheCode) {
  for (const ERR::CODE code : {ERR::OK, ERR::FAIL, ERR::PARALLEL, ERR::NOEXCEPT}) {
    CException* e = Catch(code);
    EXPECT_TRUE(e->IsKindOf(&CErrException::classCErrException));
    EXPECT_TRUE(e->IsKindOf(&CException::classCException));
    EXPECT_TRUE(e->IsKindOf(&CObject::classCObject));
    EXPECT_FALSE(e->IsKindOf(&CMemoryException::classCMemoryException));
    EXPECT_EQ(ERR::Ident(e), code);
    EXPECT_EQ(ERR::Delete(e), code);
  }
  EXPECT_EQ(ERR::Delete(Catch(ERR::NOMEM)), ERR::NOMEM);
  EXPECT_EQ(ERR::Delete(Catch(ERR::NOMEM)), ERR::NOMEM) << "the shared object outlives Delete";

  CException* file = Catch(ERR::FILE);
  ASSERT_TRUE(file->IsKindOf(&CFileException::classCFileException));
  EXPECT_EQ(static_cast<CFileException*>(file)->m_cause, 1);
  EXPECT_EQ(static_cast<CFileException*>(file)->m_lOsError, -1);
  EXPECT_EQ(ERR::Delete(file), ERR::FILE);
}

template <class Base>
bool IsCaughtAs() {
  try {
    ERR::Raise(ERR::PARALLEL);
  } catch (Base* e) {
    ERR::Delete(reinterpret_cast<CException*>(e));
    return true;
  } catch (...) {
    return false;
  }
}

TEST(Error, ThrownAsPointerToEveryBase) {
  EXPECT_TRUE(IsCaughtAs<CErrException>() && IsCaughtAs<CException>() && IsCaughtAs<CObject>() &&
              IsCaughtAs<void>());
}

TEST(Error, ClearIdentifiesAndReleasesWhateverIsInFlight) {
  EXPECT_EQ(ERR::Clear(), ERR::NOEXCEPT);
  EXPECT_EQ(Cleared(ZelvanLib::BadPolyError{}), ERR::FAIL);
  EXPECT_EQ(Cleared(std::bad_alloc{}), ERR::FAIL);
  EXPECT_EQ(Cleared("any other pointer"), ERR::FAIL);
  EXPECT_EQ(Cleared(7), ERR::FAIL);
  EXPECT_EQ(Cleared<CErrException*>(new CErrException(ERR::PARALLEL)), ERR::PARALLEL);

  int alive = 0;
  EXPECT_EQ(Cleared<CException*>(new Counted(&alive)), ERR::FAIL);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(ERR::Clear(), ERR::NOEXCEPT) << "nothing is left in flight";
}

TEST(Error, MessagesAreCutToTheBuffer) {
  CException* e = Catch(ERR::FAIL);
  char text[8] = "unset";
  unsigned int help = 9;
  EXPECT_FALSE(ERR::GetErrorMessage(e, text, sizeof text, &help));
  EXPECT_STREQ(text, "");
  EXPECT_EQ(help, 0u);
  ERR::Delete(e);

  CException* memory = Catch(ERR::NOMEM);
  EXPECT_TRUE(ERR::GetErrorMessage(memory, text, sizeof text, nullptr));
  EXPECT_EQ(std::string(text).size(), sizeof text - 1);
  EXPECT_TRUE(ERR::GetErrorMessage(memory, nullptr, 0, nullptr));
  ERR::Delete(memory);
}

}  // namespace
