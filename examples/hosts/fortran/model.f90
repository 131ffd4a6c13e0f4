! SPDX-License-Identifier: MIT
! Writes all eleven elements. VESK is the folder of the library:
!
!     gfortran vesk.f90 model.f90 -o model -L"$VESK/lib" -lCVeskDll -Wl,-rpath,"$VESK/lib"
!     ./model fan
!
! makes veskfan.dat. The module vesk, in vesk.f90, says what it guards against.
program model
  use, intrinsic :: iso_c_binding, only: dp => c_double
  use, intrinsic :: iso_fortran_env, only: error_unit
  use vesk
  implicit none
  character(len=256) :: name
  logical :: whole
  integer :: reason

  call get_command_argument(1, name)
  if (command_argument_count() /= 1) then
    write (error_unit, '(a)') "Usage: model NAME"
    stop 2, quiet=.true.
  end if
  if (.not. open_vesk(name)) then
    write (error_unit, '(a)') "vesk" // trim(name) // ".dat: cannot be opened for writing"
    stop 1, quiet=.true.
  end if
  call write_model(whole)
  reason = close_vesk()
  if (reason /= 0) then
    write (error_unit, '(a)') "vesk" // trim(name) // ".dat: " // reason_text(reason)
    stop 1, quiet=.true.
  end if
  if (.not. whole) stop 1, quiet=.true.

contains

  subroutine write_model(whole)
    logical, intent(out) :: whole
    type(point) :: origin
    integer :: lines
    origin = at(0, 0, 0)
    call number(1)
    call write_pnt(at(1, 2, 3))
    call number(2)
    call write_seg(origin, point(1000, 0, 0.5_dp))
    call number(3)
    call write_tri(origin, at(100, 0, 0), at(0, 50, 0))
    call number(4)
    call write_qua(at(0, 0, 10), at(100, 0, 10), at(100, 50, 10), at(0, 50, 10))
    call number(5)
    call write_txt(at(1, 2, 0), at(1, 0, 0), at(0, 1, 0), 0.5_dp, 2.5_dp, 7, 1, "Fan 1")
    call number(6)
    call write_box(origin, at(10, 0, 0), at(0, 20, 0), at(0, 0, 30))
    call number(7)
    call write_red(origin, at(10, 0, 0), at(0, 10, 0), at(10, 10, 0), &
                   at(2, 2, 20), at(8, 2, 20), at(2, 8, 20), at(8, 8, 20))
    call number(8)
    lines = write_cyl(at(1, 2, 3), at(1, 2, 13), 219.1_dp)
    call number(9)
    lines = lines + write_con(origin, at(0, 0, 100), 168.3_dp, 114.3_dp)
    call number(10)
    lines = lines + write_tor(origin, at(100, 0, 0), at(0, 100, 0), 20.0_dp)
    call number(11)
    lines = lines + write_elb(origin, at(0, 0, 10), at(50, 0, 0), at(0, 50, 0), 30.0_dp)
    whole = lines == 4
  end subroutine write_model

  type(point) function at(x, y, z)
    integer, intent(in) :: x, y, z
    at = point(x, y, z)
  end function at

  ! Every element has its number in the header.
  subroutine number(n)
    integer, intent(in) :: n
    if (.not. set_header("DUCT-7", "A1", n)) error stop "number"
  end subroutine number

end program model
