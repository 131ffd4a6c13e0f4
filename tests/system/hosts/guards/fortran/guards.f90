! SPDX-License-Identifier: MIT
program guards
  use, intrinsic :: iso_c_binding, only: dp => c_double
  use vesk
  implicit none
  type(point) :: o, p

  o = point(0, 0, 0)
  p = point(1, 2, 3)
  if (.not. open_vesk("guards")) error stop "open_vesk"
  if (write_elb(p, o, p, o, 1.0_dp) /= 0) error stop "an elbow from its axis"
  if (write_elb(p, o, o, p, 1.0_dp) /= 0) error stop "an elbow to its axis"
  if (set_header("A", "B", 46656)) error stop "number 46656 fits"
  if (.not. set_header("A", "B", 46655)) error stop "number 46655 does not fit"
  call write_pnt(p)
  if (close_vesk() /= 0) error stop "close_vesk"
  if (write_cyl(o, p, 1.0_dp) /= 0) error stop "a line without a file"
end program guards
