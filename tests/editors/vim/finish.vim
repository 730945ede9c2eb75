" Ends a test: what failed is written to $KVR_FAILURES.
call writefile(v:errors, $KVR_FAILURES)
if !empty(v:errors)
  cquit
endif
qall!
