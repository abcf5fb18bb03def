include("${CMAKE_CURRENT_LIST_DIR}/headers.cmake")
darwin_headers(GTest::gtest gtest gmock)
darwin_headers(GTest::gtest_main gtest gmock)
darwin_headers(GTest::gmock gtest gmock)
