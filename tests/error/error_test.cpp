// The error model: what each code throws, how it is identified and released.
#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <new>

namespace {

using Class = const CRuntimeClass*;
constexpr Class kError = &CErrException::classCErrException;
constexpr Class kMemory = &CMemoryException::classCMemoryException;
constexpr Class kFile = &CFileException::classCFileException;

template <class Pointer>
CException* Catch(ERR::CODE code) {
  try {
    ERR::Raise(code);
  } catch (Pointer e) {
    return reinterpret_cast<CException*>(e);
  }
}

TEST(Error, RaiseThrowsThePointerThatStandsForTheCode) {
  const std::pair<ERR::CODE, Class> kinds[] = {{ERR::OK, kError},       {ERR::FAIL, kError},
                                               {ERR::PARALLEL, kError}, {ERR::NOEXCEPT, kError},
                                               {ERR::NOMEM, kMemory},   {ERR::FILE, kFile}};
  for (const auto& [code, kind] : kinds) {
    for (const auto caught : {Catch<CException*>, Catch<CObject*>, Catch<void*>}) {
      CException* e = caught(code);
      for (const Class other : {kError, kMemory, kFile})
        EXPECT_EQ(e->IsKindOf(other), other == kind);
      EXPECT_TRUE(e->IsKindOf(&CException::classCException) && e->IsKindOf(&CObject::classCObject));
      EXPECT_EQ(ERR::Delete(e), code);  // what stands for no memory outlives it
    }
  }
  EXPECT_EQ(ERR::Delete(Catch<CErrException*>(ERR::PARALLEL)), ERR::PARALLEL);
  auto* file = static_cast<CFileException*>(Catch<CFileException*>(ERR::FILE));
  EXPECT_TRUE(file->m_cause == 1 && file->m_lOsError == -1);
  ERR::Delete(file);
}

struct Counted : CException {
  explicit Counted(int& count) : alive(count) { ++alive; }
  ~Counted() override { --alive; }
  int& alive;
};

template <class Thrown>
ERR::CODE Cleared(Thrown thrown) {
  try {
    throw thrown;
  } catch (...) {
    return ERR::Clear();
  }
}

TEST(Error, ClearIdentifiesAndReleasesWhateverIsInFlight) {
  int alive = 0;
  EXPECT_EQ(Cleared<CErrException*>(new CErrException(ERR::PARALLEL)), ERR::PARALLEL);
  EXPECT_EQ(Cleared<CException*>(new Counted(alive)), ERR::FAIL);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(Cleared(ZelvanLib::BadPolyError{}), ERR::FAIL);
  EXPECT_EQ(Cleared(std::bad_alloc{}), ERR::FAIL);
  EXPECT_EQ(Cleared("any other pointer"), ERR::FAIL);
  EXPECT_EQ(ERR::Clear(), ERR::NOEXCEPT) << "nothing is in flight";
}

TEST(Error, MessagesAreCutToTheBuffer) {
  char text[8] = "unset";
  unsigned int help = 9;
  CException* e = Catch<void*>(ERR::FAIL);
  EXPECT_TRUE(!ERR::GetErrorMessage(e, text, sizeof text, &help) && help == 0);
  EXPECT_STREQ(text, "");
  ERR::Delete(e);
  CException* memory = Catch<void*>(ERR::NOMEM);
  EXPECT_TRUE(ERR::GetErrorMessage(memory, text, sizeof text - 1, nullptr));
  EXPECT_STREQ(text, "Out of");
  EXPECT_TRUE(ERR::GetErrorMessage(memory, text, 0, nullptr) && *text == 'O');
  EXPECT_TRUE(ERR::GetErrorMessage(memory, nullptr, 0, nullptr));
  CException* file = Catch<void*>(ERR::FILE);
  EXPECT_TRUE(ERR::GetErrorMessage(file, text, sizeof text, nullptr));
  EXPECT_STREQ(text, "A file ");
  ERR::Delete(file);
}

}  // namespace
