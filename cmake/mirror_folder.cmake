# Makes the folder TO hold exactly what FROM holds, then touches STAMP.
file(REMOVE_RECURSE ${TO})
get_filename_component(parent ${TO} DIRECTORY)
file(COPY ${FROM} DESTINATION ${parent})
file(TOUCH ${STAMP})
