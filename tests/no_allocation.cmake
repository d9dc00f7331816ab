# The library allocates nothing: no object of libcvn_np_lib.a refers to an
# allocator.  cmake -DNM=<nm> -DLIB=<libcvn_np_lib.a> -P no_allocation.cmake
execute_process(COMMAND ${NM} -u ${LIB} OUTPUT_VARIABLE undefined RESULT_VARIABLE rc)
string(REGEX MATCHALL "U (malloc|calloc|realloc|reallocarray|free|aligned_alloc|posix_memalign|\
memalign|valloc|pvalloc|strdup|strndup|_Znw[^\n]*|_Zna[^\n]*|_Zdl[^\n]*|_Zda[^\n]*)\n" hits "${undefined}")
if(NOT rc EQUAL 0 OR NOT undefined MATCHES "U " OR hits)
  message(FATAL_ERROR "nm ${LIB} (status ${rc}) refers to an allocator: ${hits}")
endif()
